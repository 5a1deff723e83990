// assign: a catalog's or a user's coordinate reference system for drawings.
#include <memory>

#include <fmt/format.h>

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/drawing/catalog_lookup.h"
#include "orvelcs/drawing/change.h"
#include "orvelcs/drawing/definition_file.h"
#include "orvelcs/drawing/holders.h"
#include "orvelcs/drawing/stored_forms.h"

namespace Orvelcs {

namespace CoordinateSystem = Zentara::Gis::Orvel::CoordinateSystem;
namespace Library = Zentara::Infrastructure::SpatialReference;

namespace {

struct AssignOptions {
    std::vector<std::string> arguments; // CODE FILE…, or FILE… with a definition
    std::string definitionFile;
    std::string code;
    CLI::Option* definitionOption = nullptr;
    CLI::Option* codeOption = nullptr;
    ChangeOptions change;

    bool isUserDefined() const { return definitionOption->count() > 0; }
};

std::string doneText(const std::wstring& code)
{
    return "assigned " + Embedded::utf8FromWide(code);
}

// Splits the positional arguments into the code and the files.
std::wstring splitArguments(AssignOptions& options)
{
    options.change.files = options.arguments;
    if (options.isUserDefined()) {
        if (options.codeOption->count() == 0)
            throw wrongUsage("--definition", "needs --code, the code that the system is to have");
        return wideArgument("--code", options.code);
    }
    if (options.codeOption->count() > 0)
        throw wrongUsage("--code", "goes with --definition only");
    if (options.arguments.front().empty())
        throw wrongUsage("CODE", "is empty; to remove a coordinate system use clear");
    if (options.arguments.size() < 2)
        throw wrongUsage("FILE", "is required after CODE");
    options.change.files.erase(options.change.files.begin());
    return wideArgument("CODE", options.arguments.front());
}

void noteDeprecation(const Embedded::CatalogEntry& entry, Output& output)
{
    if (!entry.deprecated)
        return;
    const std::vector<std::wstring> replacements = Embedded::replacementCodes(entry.code);
    output.note(Embedded::utf8FromWide(entry.code),
                replacements.empty() ? "deprecated"
                                     : "deprecated; replaced by " + Embedded::utf8FromWide(replacements.front()));
}

ExitStatus assignFromCatalog(const AssignOptions& options, const std::wstring& code, Output& output)
{
    const Embedded::Expected<Embedded::CatalogEntry> entry = Embedded::findCatalogEntry(code);
    if (entry)
        noteDeprecation(*entry, output);
    Change change;
    change.apply = [&](QeDbDatabase* database, Library::Status& status) {
        return CoordinateSystem::SetCoordinateSystem(code.c_str(), database, &status);
    };
    change.done = doneText(entry ? entry->code : code); // as the catalog spells it
    change.reason = [&](Qeapp::ErrorStatus) {
        LibraryObject<Library::CoordinateReferenceSystemDefinition> definition;
        const Library::Status status =
            Library::CoordinateReferenceSystemDefinition::Load(code.c_str(), definition.put());
        if (status == Library::statusOk)
            return std::string("the coordinate system could not be assigned");
        if (status != Library::statusNotFound)
            return describeLoadFailure(code, status);
        return fmt::format("the catalog has no {}{}", Embedded::utf8FromWide(code), nearestCodesClause(code));
    };
    return changeDrawings(options.change, change, output);
}

ExitStatus assignDefinition(const AssignOptions& options, const std::wstring& code, Output& output)
{
    if (catalogEntry(code))
        throw Failure(Embedded::utf8FromWide(code),
                      "is the code of a system of the catalog; a definition needs a code of its own");
    if (!isLegacyCode(code))
        throw Failure("--code", "expected a code, found \".\", which readers of older drawing versions take for none");
    const DefinedSystem system = systemFromTextFile(options.definitionFile, code);
    Change change;
    change.apply = [&](QeDbDatabase* database, Library::Status& status) {
        return CoordinateSystem::SetCoordinateSystem(system.get(), database, &status);
    };
    change.done = doneText(code);
    change.reason = [](Qeapp::ErrorStatus) { return std::string("the coordinate system could not be assigned"); };
    return changeDrawings(options.change, change, output);
}

ExitStatus runAssign(AssignOptions& options, Output& output)
{
    const std::wstring code = splitArguments(options);
    checkChangeOptions(options.change, output);
    if (!options.isUserDefined())
        return assignFromCatalog(options, code, output);
    if (options.definitionFile == kStandardStream && options.change.files.front() == kStandardStream)
        throw wrongUsage(kStandardStream, "standard input cannot be both the definition and the drawing");
    try {
        return assignDefinition(options, code, output);
    } catch (const Failure& failure) {
        printUnchanged(options.change.files, failure, output);
        throw;
    }
}

std::vector<Command> declareAssign(CLI::App& program)
{
    auto options = std::make_shared<AssignOptions>();
    CLI::App* app = addCommand(
        program, {"assign",
                  "Assign a coordinate reference system to drawings",
                  {"assign [OPTIONS] CODE FILE...", "assign [OPTIONS] --definition TEXTFILE --code CODE FILE..."},
                  "A drawing whose assignment fails or is vetoed is left exactly as it was."});
    addArguments(*app, "CODE FILE...", options->arguments,
                 "a code of the catalog such as EPSG:25832, and the drawings; with --definition only the drawings")
        ->required();
    options->definitionOption =
        addArgument(*app, "--definition TEXTFILE", options->definitionFile,
                    "a user-defined system as WKT, PROJJSON or a PROJ string in UTF-8; - is standard input");
    options->codeOption = addArgument(*app, "--code CODE", options->code,
                                      "a code for the user-defined system that the catalog does not have");
    addChangeOptions(*app, options->change);
    return {{app, [options](Output& output) { return runAssign(*options, output); }}};
}

const CommandRegistration kAssignCommand({HelpGroup::drawings, 2}, declareAssign);

} // namespace

} // namespace Orvelcs
