// assign: a catalog's or a user's coordinate reference system for drawings.
#include <memory>

#include <fmt/format.h>

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/drawing/catalog_lookup.h"
#include "orvelcs/drawing/change.h"
#include "orvelcs/drawing/holders.h"
#include "orvelcs/drawing/system_argument.h"

namespace Orvelcs {

namespace CoordinateSystem = Zentara::Gis::Orvel::CoordinateSystem;
namespace Library = Zentara::Infrastructure::SpatialReference;

namespace {

struct AssignOptions {
    std::vector<std::string> arguments; // SYSTEM FILE…, or FILE… with a definition
    std::string definitionFile;
    std::string code;
    CLI::Option* definitionOption = nullptr;
    CLI::Option* codeOption = nullptr;
    ChangeOptions change;

    bool isUserDefined() const { return definitionOption->count() > 0; }
    /// @FILE, also for --definition; nothing for a code of the catalog.
    std::string systemFile() const
    {
        if (isUserDefined())
            return "@" + definitionFile;
        return namesFile(arguments.front()) ? arguments.front() : std::string();
    }
};

std::string doneText(const std::wstring& code)
{
    return "assigned " + Embedded::utf8FromWide(code);
}

// Splits the positional arguments into the system and the files. Returns the code of the catalog, or nothing.
std::wstring splitArguments(AssignOptions& options)
{
    options.change.files = options.arguments;
    if (options.isUserDefined()) {
        if (options.codeOption->count() == 0)
            throw wrongUsage("--definition", "needs --code, the code that the system is to have");
        return {};
    }
    if (options.codeOption->count() > 0 && !namesFile(options.arguments.front()))
        throw wrongUsage("--code", "goes with the system of a text only: @TEXTFILE or --definition");
    if (options.arguments.front().empty())
        throw wrongUsage("SYSTEM", "is empty; to remove a coordinate system use clear");
    if (options.arguments.size() < 2)
        throw wrongUsage("FILE", "is required after SYSTEM");
    options.change.files.erase(options.change.files.begin());
    return namesFile(options.arguments.front()) ? std::wstring() : wideArgument("SYSTEM", options.arguments.front());
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
        return describeMissingCode(code);
    };
    return changeDrawings(options.change, change, output);
}

ExitStatus assignSystem(const AssignOptions& options, Output& output)
{
    const NamedSystem system =
        readSystemToStore("SYSTEM", options.systemFile(), *options.codeOption, options.code, output);
    Change change;
    change.apply = [&](QeDbDatabase* database, Library::Status& status) {
        return CoordinateSystem::SetCoordinateSystem(system.definition.get(), database, &status);
    };
    change.done = doneText(system.code);
    change.reason = [](Qeapp::ErrorStatus) { return std::string("the coordinate system could not be assigned"); };
    return changeDrawings(options.change, change, output);
}

ExitStatus runAssign(AssignOptions& options, Output& output)
{
    const std::wstring code = splitArguments(options);
    checkChangeOptions(options.change, output);
    const std::string file = options.systemFile();
    if (file.empty())
        return assignFromCatalog(options, code, output);
    if (namesStandardInput(file) && options.change.files.front() == kStandardStream)
        throw wrongUsage(kStandardStream, "standard input cannot be both the definition and the drawing");
    try {
        return assignSystem(options, output);
    } catch (const Failure& failure) {
        if (failure.status() != ExitStatus::wrongUsage)
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
                  {"assign [OPTIONS] SYSTEM FILE...", "assign [OPTIONS] @TEXTFILE --code CODE FILE...",
                   "assign [OPTIONS] --definition TEXTFILE --code CODE FILE..."},
                  std::string(kSystemHelp) +
                      "\nThe system of a text is user-defined and needs --code; that of a drawing keeps its code.\n"
                      "A drawing whose assignment fails or is vetoed is left exactly as it was."});
    addArguments(*app, "SYSTEM FILE...", options->arguments,
                 "the system, and the drawings; with --definition only the drawings")
        ->required();
    options->definitionOption = addArgument(*app, "--definition TEXTFILE", options->definitionFile,
                                            "the same as @TEXTFILE; - is standard input");
    options->codeOption = addArgument(*app, "--code CODE", options->code,
                                      "the code of the user-defined system of a text, which the catalog does not have");
    addChangeOptions(*app, options->change);
    return {{app, [options](Output& output) { return runAssign(*options, output); }}};
}

const CommandRegistration kAssignCommand({HelpGroup::drawings, 2}, declareAssign);

} // namespace

} // namespace Orvelcs
