// show: what a drawing's coordinate reference system is, as the module reads it.
#include <memory>

#include <fmt/format.h>

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/error_document.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/drawing/batch.h"
#include "orvelcs/drawing/drawings.h"
#include "orvelcs/drawing/holders.h"
#include "orvelcs/drawing/stored_forms.h"
#include "orvelcs/drawing/system_argument.h"
#include "orvelcs/output/result_names.h"
#include "orvelcs/output/system_format.h"

namespace Orvelcs {

namespace CoordinateSystem = Zentara::Gis::Orvel::CoordinateSystem;

namespace {

struct ShowOptions {
    DrawingFiles files;
    bool wkt = false;
    FormatOption format;
};

struct ShowReport {
    std::string file;
    std::optional<int> drawingVersion;
    SystemDescription system;
    std::optional<bool> knownToCatalog;
    std::optional<bool> deprecated; // of a system that the catalog knows
    std::vector<std::wstring> replacements;
    std::optional<std::string> source;
    std::optional<std::string> formatted;
    std::optional<Failure> failure; // of a drawing without a system, too
    std::optional<std::string> note;

    ExitStatus status() const { return failure ? failure->status() : ExitStatus::done; }
};

/// Reads the drawing's own definition where the module cannot ask the catalog whether it has the system.
Qeapp::ErrorStatus askModule(SystemHolder& system, std::optional<bool>& knownToCatalog, QeDbDatabase* database)
{
    bool known = false;
    const Qeapp::ErrorStatus result = CoordinateSystem::GetCoordinateSystem(system.put(), &known, database);
    if (result == Qeapp::eOk && system)
        knownToCatalog = known;
    if (result == Qeapp::eOk || result == Qeapp::eOutOfMemory)
        return result;
    return CoordinateSystem::GetCoordinateSystem(system.put(), nullptr, database);
}

std::string describeCatalogFault(const std::wstring& code)
{
    const auto check = Embedded::checkCatalogFor(code);
    return check ? "PROJ cannot read this code from the catalog" : Embedded::unreadableCatalogMessage(check.error());
}

/// For a drawing with a legacy code alone, the module reads the definition from the catalog.
std::string describeUnreadable(Qeapp::ErrorStatus result, const std::wstring& legacyCode)
{
    const std::string message = resultName(result) + ": the stored coordinate system cannot be read";
    if (legacyCode.empty())
        return message;
    const auto check = Embedded::checkCatalogFor(legacyCode);
    return check ? message : message + ": " + Embedded::unreadableCatalogMessage(check.error());
}

/// What the catalog says of a system that it knows.
void addDeprecation(ShowReport& report)
{
    const auto entry = report.knownToCatalog.value_or(false) && report.system.code
                           ? Embedded::findCatalogEntry(*report.system.code)
                           : Embedded::failure(0, {});
    if (!entry)
        return;
    report.deprecated = entry->deprecated;
    if (entry->deprecated)
        report.replacements = Embedded::replacementCodes(entry->code);
}

/// Adds what the options ask for.
void addDefinition(ShowReport& report, const System& system, const ShowOptions& options)
{
    addDeprecation(report);
    if (options.wkt)
        report.system.wkt = writeWkt(system);
    if (options.format.isGiven())
        report.formatted = writeInFormat(system, options.format, report.file);
}

void readStored(ShowReport& report, QeDbDatabase* database, const ShowOptions& options)
{
    SystemHolder system;
    const Qeapp::ErrorStatus result = askModule(system, report.knownToCatalog, database);
    const std::wstring legacyCode = readLegacyCode(database);
    if (!legacyCode.empty())
        report.source = "legacy";
    if (result != Qeapp::eOk) {
        report.failure =
            Failure(report.file, describeUnreadable(result, legacyCode), ExitStatus::failed, resultCode(result));
        return;
    }
    if (!system) {
        report.failure = Failure(report.file, "has no coordinate system", ExitStatus::nothingFound);
        return;
    }
    if (!report.source)
        report.source = "geodata";
    report.system = describe(*system.get());
    if (!report.knownToCatalog)
        report.note = "this is the drawing's own definition; " + describeCatalogFault(report.system.code.value_or(L""));
    addDefinition(report, *system.get(), options);
}

/// The subject of what is reported is the argument.
Failure failureOfArgument(const std::string& argument, const Failure& failure)
{
    return failure.subject() == argument ? failure
                                         : Failure(argument, failure.text(), failure.status(), failure.code());
}

ShowReport readNamed(const std::string& argument, const ShowOptions& options, const Output& output)
{
    ShowReport report;
    report.file = argument;
    try {
        const NamedSystem named = readSystem("FILE", argument, output);
        report.system = describe(named);
        report.knownToCatalog = !named.code.empty() && catalogEntry(named.code).has_value();
        addDefinition(report, *named.definition, options);
    } catch (const Failure& failure) {
        report.failure = failureOfArgument(argument, failure);
    }
    return report;
}

ShowReport readDrawing(const std::string& file, const ShowOptions& options, const Output& output)
{
    ShowReport report;
    report.file = file;
    OpenDrawing drawing(file, Embedded::DrawingAccess::reading, output);
    if (const Embedded::Expected<void> loaded = drawing.load(); !loaded) {
        report.failure = drawingFailure(file, loaded.error());
        return report;
    }
    report.drawingVersion = drawing.version();
    try {
        readStored(report, drawing.database(), options);
        if (const Embedded::Expected<void> loading = drawing.loadingResult(); !loading)
            report.failure = drawingFailure(file, loading.error());
    } catch (const Failure& failure) {
        report.failure = failureOfArgument(file, failure);
    }
    return report;
}

ShowReport readArgument(const std::string& argument, const ShowOptions& options, const Output& output)
{
    if (!namesSystemOnly(argument))
        return readDrawing(argument, options, output);
    const std::string file = argument.substr(1);
    return isDrawingFile(file) ? readDrawing(file, options, output) : readNamed(argument, options, output);
}

Json asJson(const ShowReport& report, const ShowOptions& options, const Output& output)
{
    Json json = {{"file", report.file},
                 {"drawingVersion", jsonValue(report.drawingVersion)},
                 {"code", jsonText(report.system.code)},
                 {"name", jsonText(report.system.name)},
                 {"kind", jsonValue(report.system.kind)},
                 {"datum", jsonText(report.system.datum)},
                 {"ellipsoid", jsonText(report.system.ellipsoid)},
                 {"knownToCatalog", jsonValue(report.knownToCatalog)},
                 {"source", jsonValue(report.source)}};
    json["deprecated"] = jsonValue(report.deprecated);
    json["replacedBy"] = firstReplacement(report.replacements);
    if (options.wkt)
        json["wkt"] = jsonText(report.system.wkt);
    addFormatted(json, options.format, report.formatted);
    if (report.status() == ExitStatus::failed) {
        const Json error = errorAsJson(output.command(), *report.failure);
        json["result"] = error["code"];
        json["error"] = error;
    }
    return json;
}

void printDeprecation(const ShowReport& report, LabelledLines& lines)
{
    if (!report.deprecated.value_or(false))
        return;
    lines.add("deprecated", "yes");
    lines.add("replaced by", replacementsText(report.replacements));
}

void print(const ShowReport& report, const ShowOptions& options, Output& output)
{
    if (report.formatted)
        return output.line(*report.formatted);
    if (!report.system.kind || options.format.isGiven())
        return;
    output.heading(oneLine(report.file));
    LabelledLines lines;
    if (report.drawingVersion)
        lines.add("drawing version", std::to_string(*report.drawingVersion));
    lines.add(report.system);
    lines.add("known to catalog", !report.knownToCatalog ? "not asked" : *report.knownToCatalog ? "yes" : "no");
    printDeprecation(report, lines);
    if (report.source)
        lines.add("source", *report.source);
    lines.add("wkt", report.system.wkt);
    lines.print(output);
}

ExitStatus runShow(ShowOptions& options, Output& output)
{
    checkFormatOption(options.format, options.wkt);
    readFileList(options.files);
    checkFileNames(options.files.names, false, output);
    return forEachDrawing(options.files, output, [&](const std::string& file) {
        const ShowReport report = readArgument(file, options, output);
        if (!output.json())
            print(report, options, output);
        if (report.note)
            output.note(file, *report.note);
        if (report.failure)
            output.error(file, report.failure->what());
        return DrawingOutcome{report.status(), asJson(report, options, output)};
    });
}

const std::string kShowDetails =
    std::string("The system is shown as the module reads it. @FILE is the system of a drawing, or of a text with WKT, "
                "PROJJSON or a PROJ string. For a deprecated system the codes that replace it are shown.\n\n") +
    kFormatHelp +
    "\n\n"
    "In JSON source is legacy for a drawing with a legacy code, which the definition record or the catalog completes, "
    "and otherwise geodata. deprecated says whether the catalog has deprecated the system, and replacedBy is the code "
    "that replaces it best; both are null for a system that the catalog does not have.\n\n"
    "If the catalog cannot be read, the definition that the drawing stores is shown, and a note gives the reason. "
    "knownToCatalog is null then.";

std::vector<Command> declareShow(CLI::App& program)
{
    auto options = std::make_shared<ShowOptions>();
    CLI::App* app = addCommand(
        program,
        {"show",
         "Show the coordinate reference system of drawings",
         {"show [OPTIONS] FILE..."},
         kShowDetails,
         {{"Show the system of a drawing", "orvelcs show plan.qedb"},
          {"Show another program the system of a drawing", "projinfo \"$(orvelcs show plan.qedb --format wkt2)\""},
          {"Print the code of every drawing in a folder",
           "orvelcs --json show plans/*.qedb | jq -r '.[] | [.file, .code] | @tsv'"},
          {"Look at a drawing without a system", "orvelcs show other.qedb", ExitStatus::nothingFound}},
         {{ExitStatus::nothingFound, "a drawing has no coordinate reference system"}}});
    addArguments(*app, "FILE", options->files.names, "the drawings; - is standard input; @FILE may be a text");
    addFileListOptions(*app, options->files);
    app->add_flag("--wkt", options->wkt, "also print the definition as WKT 1, or as WKT 2 if WKT 1 cannot express it");
    addFormatOption(*app, options->format);
    return {{app, [options](Output& output) { return runShow(*options, output); }}};
}

const CommandRegistration kShowCommand({HelpGroup::drawings, 4}, declareShow);

} // namespace

} // namespace Orvelcs
