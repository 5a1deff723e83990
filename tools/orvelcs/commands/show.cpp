// show: what a drawing's coordinate reference system is, as the module reads it.
#include <memory>

#include <fmt/format.h>

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/drawing/batch.h"
#include "orvelcs/drawing/drawings.h"
#include "orvelcs/drawing/holders.h"
#include "orvelcs/drawing/stored_forms.h"
#include "orvelcs/output/result_names.h"
#include "orvelcs/output/system_description.h"

namespace Orvelcs {

namespace CoordinateSystem = Zentara::Gis::Orvel::CoordinateSystem;

namespace {

struct ShowOptions {
    DrawingFiles files;
    bool wkt = false;
};

struct ShowReport {
    std::string file;
    std::optional<int> drawingVersion;
    SystemDescription system;
    std::optional<bool> knownToCatalog;
    std::optional<std::string> source;
    ExitStatus status = ExitStatus::done;
    std::optional<int> result;        // of what failed
    std::optional<std::string> error; // of a drawing without a system, too
    std::optional<std::string> note;
};

void fail(ShowReport& report, Qeapp::ErrorStatus result, const std::string& message)
{
    report.status = ExitStatus::failed;
    report.result = result;
    report.error = message;
}

using SystemHolder = LibraryObject<System>;

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

void readSystem(ShowReport& report, QeDbDatabase* database, bool wantsWkt)
{
    SystemHolder system;
    const Qeapp::ErrorStatus result = askModule(system, report.knownToCatalog, database);
    const std::wstring legacyCode = readLegacyCode(database);
    if (!legacyCode.empty())
        report.source = "legacy";
    if (result != Qeapp::eOk) {
        fail(report, result, describeUnreadable(result, legacyCode));
        return;
    }
    if (!system) {
        report.status = ExitStatus::nothingFound;
        report.error = "has no coordinate system";
        return;
    }
    if (!report.source)
        report.source = "geodata";
    report.system = describe(*system.get());
    if (!report.knownToCatalog)
        report.note = "this is the drawing's own definition; " + describeCatalogFault(report.system.code.value_or(L""));
    if (wantsWkt)
        report.system.wkt = writeWkt(*system.get());
}

ShowReport readDrawing(const std::string& file, bool wantsWkt, const Output& output)
{
    ShowReport report;
    report.file = file;
    OpenDrawing drawing(file, Embedded::DrawingAccess::reading, output);
    if (const Embedded::Expected<void> loaded = drawing.load(); !loaded) {
        fail(report, Embedded::hostStatus(loaded), describe(file, loaded.error()));
        return report;
    }
    report.drawingVersion = drawing.version();
    try {
        readSystem(report, drawing.database(), wantsWkt);
        if (const Embedded::Expected<void> loading = drawing.loadingResult(); !loading)
            fail(report, Embedded::hostStatus(loading), describe(file, loading.error()));
    } catch (const Failure& failure) {
        report.status = failure.status();
        report.error = failure.text();
    }
    return report;
}

Json asJson(const ShowReport& report, bool wantsWkt)
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
    if (wantsWkt)
        json["wkt"] = jsonText(report.system.wkt);
    if (report.status == ExitStatus::failed) {
        json["result"] = jsonValue(report.result);
        json["error"] = jsonValue(report.error);
    }
    return json;
}

void print(const ShowReport& report, Output& output)
{
    if (!report.system.kind)
        return;
    output.heading(oneLine(report.file));
    LabelledLines lines;
    lines.add("drawing version", std::to_string(report.drawingVersion.value_or(0)));
    lines.add(report.system);
    lines.add("known to catalog", !report.knownToCatalog ? "not asked" : *report.knownToCatalog ? "yes" : "no");
    lines.add("source", report.source.value_or(""));
    lines.add("wkt", report.system.wkt);
    lines.print(output);
}

ExitStatus runShow(ShowOptions& options, Output& output)
{
    readFileList(options.files);
    checkFileNames(options.files.names, false, output);
    return forEachDrawing(options.files, output, [&](const std::string& file) {
        const ShowReport report = readDrawing(file, options.wkt, output);
        if (!output.json())
            print(report, output);
        if (report.note)
            output.note(file, *report.note);
        if (report.error)
            output.error(file, *report.error);
        return DrawingOutcome{report.status, asJson(report, options.wkt)};
    });
}

std::vector<Command> declareShow(CLI::App& program)
{
    auto options = std::make_shared<ShowOptions>();
    CLI::App* app = addCommand(program, {"show",
                                         "Show the coordinate reference system of drawings",
                                         {"show [OPTIONS] FILE..."},
                                         "Exit status 3 if a drawing has no coordinate reference system."});
    addArguments(*app, "FILE", options->files.names, "the drawings; - is standard input");
    addFileListOptions(*app, options->files);
    app->add_flag("--wkt", options->wkt, "also print the definition as well-known text");
    return {{app, [options](Output& output) { return runShow(*options, output); }}};
}

const CommandRegistration kShowCommand({HelpGroup::drawings, 4}, declareShow);

} // namespace

} // namespace Orvelcs
