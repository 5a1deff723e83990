// convert: a drawing saved by the host in another drawing version.
#include <memory>

#include <fmt/format.h>

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/base/path.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog.h"
#include "orvelcs/cli/standard_streams.h"
#include "orvelcs/drawing/change.h"
#include "orvelcs/output/system_description.h"
#include "storage/library_holder.h"

namespace Orvelcs {

namespace CoordinateSystem = Zentara::Gis::Orvel::CoordinateSystem;

namespace {

struct ConvertOptions {
    std::string file;
    std::string version;
    std::string target;
    CLI::Option* targetOption = nullptr;
    bool force = false;
    ChangeOptions change; // its files are where the drawing goes

    bool isReplaced() const { return targetOption->count() == 0; }
    Embedded::DrawingAccess access() const
    {
        return isReplaced() ? Embedded::DrawingAccess::changing : Embedded::DrawingAccess::reading;
    }
};

struct ConvertReport {
    std::optional<int> version; // none when nothing was written
    int result = Qeapp::eOk;
    std::vector<Event> events;
    std::string subject; // of the error
    std::string error;   // empty: it was done
};

// What the host's message does not say, because it does not know what its reactors keep in a drawing. The failed save
// has left the drawing as it was.
std::string conversionReason(QeDbDatabase* database, Qeapp::ErrorStatus failure)
{
    Orvel::LibraryObject<System> system;
    if (CoordinateSystem::GetCoordinateSystem(system.put(), nullptr, database) != Qeapp::eOk)
        return ": its coordinate system cannot be read";
    if (!system)
        return "";
    const SystemDescription description = describe(*system.get());
    if (const auto cause =
            failure == Qeapp::eInvalidInput ? Embedded::whyCatalogFails(description.code.value_or(L"")) : std::nullopt)
        return ": " + Embedded::unreadableCatalogMessage(*cause);
    if (failure != Qeapp::eInvalidResbuf)
        return "";
    return fmt::format(": {} does not fit into the older forms",
                       Embedded::utf8FromWide(description.code.value_or(L"its coordinate system")));
}

void failSave(ConvertReport& report, const ConvertOptions& options, OpenDrawing& drawing, const Embedded::Error& error)
{
    const std::string& target = options.change.files.front();
    const bool isOfTarget = error.text().starts_with(Embedded::displayName(Embedded::pathFromUtf8(target)) + ": ");
    report.result = error.status;
    report.subject = isOfTarget ? target : options.file;
    report.error = error.status == Qeapp::eFileExists ? kExists : describe(report.subject, error);
    if (!isOfTarget)
        report.error += conversionReason(drawing.database(), Embedded::hostStatus(error));
}

ConvertReport convertDrawing(const ConvertOptions& options, int version, Output& output)
{
    ConvertReport report;
    OpenDrawing drawing(options.file, options.access(), output);
    if (const Embedded::Expected<void> loaded = drawing.load(); !loaded) {
        report.result = loaded.error().status;
        report.subject = options.file;
        report.error = describe(options.file, loaded.error());
        return report;
    }
    const RecordingReactor reactor(vetoesOf(options.change));
    const Embedded::Expected<void> saved =
        saveDrawing(*drawing.database(), options.change.files.front(), static_cast<QeDb::QeDbDwgVersion>(version),
                    options.force ? Embedded::Overwriting::drawings : Embedded::Overwriting::refused, output);
    report.events = reactor.events();
    if (saved)
        report.version = version;
    else
        failSave(report, options, drawing, saved.error());
    return report;
}

Json convertedAsJson(const ConvertOptions& options, const ConvertReport& report)
{
    Json json = {{"file", options.file},
                 {"drawingVersion", jsonValue(report.version)},
                 {"result", report.result},
                 {"events", eventsAsJson(report.events)}};
    if (!report.error.empty())
        json["error"] = report.subject == options.file ? report.error : report.subject + ": " + report.error;
    return json;
}

void printConverted(const ConvertOptions& options, const ConvertReport& report, Output& output)
{
    const std::string& target = options.change.files.front();
    printEvents(options.file, report.events, options.change, output);
    if (!report.error.empty())
        output.error(report.subject, report.error);
    else if (target != kStandardStream)
        output.confirm(options.file, fmt::format("converted to drawing version {}{}", *report.version,
                                                 options.isReplaced() ? "" : ", in " + target));
}

ExitStatus runConvert(ConvertOptions& options, Output& output)
{
    const int version = parseInteger("--to", options.version, QeDb::kOldestDwg, QeDb::kCurrentDwg);
    checkFileNames({options.file}, false, output);
    options.change.files = {options.isReplaced() ? options.file : options.target};
    checkChangeOptions(options.change, output);
    return forEachDrawing({options.file}, output, [&](const std::string&) {
        const ConvertReport report = convertDrawing(options, version, output);
        printConverted(options, report, output);
        return DrawingOutcome{report.error.empty() ? ExitStatus::done : ExitStatus::failed,
                              convertedAsJson(options, report)};
    });
}

} // namespace

Command declareConvert(CLI::App& program)
{
    auto options = std::make_shared<ConvertOptions>();
    CLI::App* app =
        addCommand(program, {"convert",
                             "Save a drawing in another drawing version",
                             {"convert [OPTIONS] FILE --to N", "convert [OPTIONS] FILE --to N -o OUT"},
                             "Below version 30 the coordinate system is stored in the older forms, from 30 on as the\n"
                             "GeoData text alone. A drawing that cannot be converted is left exactly as it was, and\n"
                             "so is OUT. The coordinate system stays the same, so reactors hear of nothing."});
    addArgument(*app, "FILE", options->file, "the drawing; - is standard input, and the result is printed")->required();
    addArgument(*app, "--to N", options->version, "the drawing version, 21 to 33")->required();
    options->targetOption = addArgument(*app, "-o,--output OUT", options->target,
                                        "write there, and leave FILE alone; - prints the drawing");
    app->add_flag("--force", options->force, "overwrite a drawing that exists as OUT");
    addChangeOptions(*app, options->change);
    return {app, [options](Output& output) { return runConvert(*options, output); }};
}

} // namespace Orvelcs
