// assign: a catalog's or a user's coordinate reference system for drawings.
#include <functional>
#include <memory>
#include <utility>

#include <fmt/format.h>

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/cli/process.h"
#include "orvelcs/drawing/catalog_lookup.h"
#include "orvelcs/drawing/change.h"
#include "orvelcs/drawing/holders.h"
#include "orvelcs/drawing/swapped_arguments.h"
#include "orvelcs/drawing/system_argument.h"
#include "orvelcs/output/result_names.h"

namespace Orvelcs {

namespace CoordinateSystem = Zentara::Gis::Orvel::CoordinateSystem;
namespace Library = Zentara::Infrastructure::SpatialReference;

namespace {

struct AssignOptions {
    std::string system;
    CLI::Option* systemArgument = nullptr;
    std::vector<std::string> givenFiles; // without those of the list
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
        return namesFile(system) ? system : std::string();
    }
};

/// With --definition the first of the positional arguments is a drawing.
void takeSystemAsDrawing(AssignOptions& options)
{
    std::vector<std::string>& names = options.change.files.names;
    if (options.codeOption->count() == 0)
        throw wrongUsage("--definition", "needs --code, the code that the system is to have");
    if (options.systemArgument->count() > 0)
        names.insert(names.begin(), options.system);
}

/// Returns the code of the catalog, or nothing where the system is that of a file.
std::wstring checkSystem(AssignOptions& options)
{
    if (options.isUserDefined()) {
        takeSystemAsDrawing(options);
        return {};
    }
    if (options.systemArgument->count() == 0)
        throw wrongUsage("SYSTEM", "is required");
    if (options.codeOption->count() > 0 && !namesFile(options.system))
        throw wrongUsage("--code", "goes with the system of a text only: @TEXTFILE");
    if (options.system.empty())
        throw wrongUsage("SYSTEM", "is empty; to remove a coordinate system use clear");
    if (options.change.files.names.empty() && !options.change.files.hasList())
        throw wrongUsage("FILE", "is required after SYSTEM");
    return namesFile(options.system) ? std::wstring() : codeArgument("SYSTEM", options.system);
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

/// "orvelcs assign EPSG:25832 plan.qedb"
std::string correctedCommand(const std::string& code, const AssignOptions& options)
{
    constexpr std::size_t kMostFiles = 3;
    std::string command = "orvelcs assign " + quotedArgument(code);
    if (options.change.files.hasList())
        command += " --files-from " + quotedArgument(options.change.files.list);
    std::size_t count = 0;
    std::vector<std::string> arguments = options.givenFiles;
    arguments.insert(arguments.begin(), options.system);
    for (const std::string& argument : arguments) {
        if (argument == code)
            continue;
        if (count++ == kMostFiles)
            return command + " ...";
        command += " " + quotedArgument(argument);
    }
    return command;
}

std::string describeUnusableCode(const std::wstring& code, Library::Status status)
{
    return status == Library::statusNotFound ? describeMissingCode(code) : describeLoadFailure(code, status);
}

/// Throws Failure for a code that cannot be assigned to any drawing: with the result that the module would return for
/// each of them, or for wrong usage when the code and a file are swapped.
void checkCode(const AssignOptions& options, const std::wstring& code)
{
    SystemHolder definition;
    const Library::Status status = Library::CoordinateReferenceSystemDefinition::Load(code.c_str(), definition.put());
    if (status == Library::statusOk)
        return;
    const std::string& word = options.system;
    if (status == Library::statusNotFound)
        if (const auto swapped = findSwappedCode(word, options.change.files.names))
            throw wrongUsage(word, fmt::format("stands where the code {} belongs; did you mean {}", *swapped,
                                               correctedCommand(*swapped, options)));
    throw Failure(Embedded::utf8FromWide(code),
                  fmt::format("{}: {}", resultName(Qeapp::eInvalidInput), describeUnusableCode(code, status)),
                  ExitStatus::failed, resultCode(Qeapp::eInvalidInput));
}

ExitStatus assign(const AssignOptions& options, const std::wstring& code,
                  std::function<Qeapp::ErrorStatus(QeDbDatabase*, Library::Status&)> apply, Output& output)
{
    Change change;
    change.apply = std::move(apply);
    change.done = "assigned " + Embedded::utf8FromWide(code);
    change.reason = [](Qeapp::ErrorStatus) { return std::string("the coordinate system could not be assigned"); };
    return changeDrawings(options.change, change, output);
}

ExitStatus assignFromCatalog(const AssignOptions& options, const std::wstring& code, Output& output)
{
    const Embedded::Expected<Embedded::CatalogEntry> entry = Embedded::findCatalogEntry(code);
    if (entry)
        noteDeprecation(*entry, output);
    const std::wstring& spelledCode = entry ? entry->code : code; // as the catalog spells it
    const auto apply = [&](QeDbDatabase* database, Library::Status& status) {
        return CoordinateSystem::SetCoordinateSystem(code.c_str(), database, &status);
    };
    return assign(options, spelledCode, apply, output);
}

ExitStatus assignSystem(const AssignOptions& options, const NamedSystem& system, Output& output)
{
    const auto apply = [&](QeDbDatabase* database, Library::Status& status) {
        return CoordinateSystem::SetCoordinateSystem(system.definition.get(), database, &status);
    };
    return assign(options, system.code, apply, output);
}

/// Reads the list, and throws Failure for a standard stream that is two things at once.
void readFiles(AssignOptions& options, const Output& output)
{
    DrawingFiles& files = options.change.files;
    options.givenFiles = files.names;
    const bool readsDefinition = namesStandardInput(options.systemFile());
    if (readsDefinition && files.list == kStandardStream)
        throw wrongUsage(kStandardStream, "standard input cannot be both the definition and the list");
    readFileList(files);
    checkChangeOptions(options.change, output);
    if (readsDefinition && !files.isBatch() && files.names.front() == kStandardStream)
        throw wrongUsage(kStandardStream, "standard input cannot be both the definition and the drawing");
}

/// For a code of the catalog the module has no status but statusFailed. It is not asked about the system of a file.
UnchangedResult resultOfRefusal(const std::string& systemFile, const Failure& failure)
{
    if (systemFile.empty())
        return {Qeapp::eInvalidInput, Library::statusFailed};
    return {std::nullopt, failure.code() ? failure.code()->number : static_cast<int>(Library::statusOk)};
}

/// Finds the system once, before the first drawing is opened.
ExitStatus runAssign(AssignOptions& options, Output& output)
{
    const std::wstring code = checkSystem(options);
    readFiles(options, output);
    const std::string file = options.systemFile();
    NamedSystem system;
    try {
        if (file.empty())
            checkCode(options, code);
        else
            system = readSystemToStore("SYSTEM", file, *options.codeOption, options.code, output);
    } catch (const Failure& failure) {
        printUnchanged(options.change.files, failure, resultOfRefusal(file, failure), output);
        throw;
    }
    return file.empty() ? assignFromCatalog(options, code, output) : assignSystem(options, system, output);
}

const std::string kAssignDetails =
    std::string(kSystemHelp) +
    " The system of a text is user-defined and needs --code; that of a drawing keeps its code.\n\n"
    "A drawing whose assignment fails or is vetoed is left exactly as it was; the other drawings are changed. A "
    "deprecated code is assigned with a note. For a misspelt code, or a misspelt word of a name, the message names "
    "the nearest systems that exist. If the code and a drawing are given in each other's place, that is wrong usage, "
    "and the message has the right command.\n\n"
    "In a text, a unit keeps its name and its factor, even if the usual factor of that unit differs. A definition "
    "whose units cannot be stored in this way is refused, and so is one with a NUL character in a name or code.\n\n"
    "In the notices that --events prints, the name is the code of the system, \"\" for an assignment of no "
    "definition, and null for a removal. In JSON result is the result of the host, status what the module reported of "
    "the spatial-reference library, and events every notice. For a definition that cannot be read result is null, "
    "because no drawing was opened; status says why the library refused the text and is 0 if the file could not be "
    "read; and error names the definition file.";

std::vector<Command> declareAssign(CLI::App& program)
{
    auto options = std::make_shared<AssignOptions>();
    CLI::App* app =
        addCommand(program, {"assign",
                             "Assign a coordinate reference system to drawings",
                             {"assign [OPTIONS] SYSTEM FILE...", "assign [OPTIONS] @TEXTFILE --code CODE FILE..."},
                             kAssignDetails,
                             {{"Assign a system of the catalog", "orvelcs assign EPSG:25832 plan.qedb"},
                              {"Assign a system of one's own", "orvelcs assign @works.wkt --code WORKS:1 plan.qedb"},
                              {"Assign the system of another drawing", "orvelcs assign @site.qedb plan.qedb"},
                              {"Assign a system to all drawings below a folder",
                               "find plans -name '*.qedb' -print0 | orvelcs assign EPSG:25832 --files-from - -0"}}});
    options->systemArgument = addArgument(*app, "SYSTEM", options->system, "the system");
    addArguments(*app, "FILE", options->change.files.names, "the drawings; - is standard input");
    addFileListOptions(*app, options->change.files);
    options->definitionOption =
        addArgument(*app, "--definition TEXTFILE", options->definitionFile, "", {.oldNames = {"--definition"}});
    options->codeOption = addArgument(*app, "--code CODE", options->code,
                                      "the code of the user-defined system of a text, which the catalog does not have");
    addChangeOptions(*app, options->change);
    return {{app, [options](Output& output) { return runAssign(*options, output); }}};
}

const CommandRegistration kAssignCommand({HelpGroup::drawings, 2}, declareAssign);

} // namespace

} // namespace Orvelcs
