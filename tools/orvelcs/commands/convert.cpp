// convert: a drawing saved by the host in another drawing version.
#include <memory>

#include <fmt/format.h>

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/base/path.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog.h"
#include "orvelcs/cli/error_document.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/drawing/batch.h"
#include "orvelcs/drawing/change.h"
#include "orvelcs/drawing/holders.h"
#include "orvelcs/output/result_names.h"
#include "orvelcs/output/system_description.h"

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
    std::optional<Failure> failure; // none where it was done
};

// Adds to the host's message what the host does not know: what its reactors store in a drawing. The failed save has not
// changed the drawing.
std::string describeConversionFailure(QeDbDatabase* database, Qeapp::ErrorStatus failure)
{
    SystemHolder system;
    if (CoordinateSystem::GetCoordinateSystem(system.put(), nullptr, database) != Qeapp::eOk)
        return ": its coordinate system cannot be read";
    if (!system)
        return "";
    const SystemDescription description = describe(*system.get());
    if (failure == Qeapp::eInvalidInput) {
        if (const auto check = Embedded::checkCatalogFor(description.code.value_or(L"")); !check)
            return ": " + Embedded::unreadableCatalogMessage(check.error());
    }
    if (failure != Qeapp::eInvalidResbuf)
        return "";
    return fmt::format(": {} does not fit into the older forms",
                       Embedded::utf8FromWide(description.code.value_or(L"its coordinate system")));
}

void failSave(ConvertReport& report, const ConvertOptions& options, OpenDrawing& drawing, const Embedded::Error& error)
{
    const std::string& target = options.change.files.names.front();
    const bool isOfTarget = Embedded::isInFile(Embedded::displayName(Embedded::pathFromUtf8(target)), error);
    const std::string& subject = isOfTarget ? target : options.file;
    std::string message = error.status == Qeapp::eFileExists ? kExists : describe(subject, error);
    if (!isOfTarget)
        message += describeConversionFailure(drawing.database(), Embedded::hostStatus(error));
    report.result = error.status;
    report.failure = Failure(subject, message, ExitStatus::failed, resultCode(Embedded::hostStatus(error)));
}

ConvertReport convertDrawing(const ConvertOptions& options, int version, Output& output)
{
    ConvertReport report;
    OpenDrawing drawing(options.file, options.access(), output);
    if (const Embedded::Expected<void> loaded = drawing.load(); !loaded) {
        report.result = loaded.error().status;
        report.failure = drawingFailure(options.file, loaded.error());
        return report;
    }
    const RecordingReactor reactor(parseVetoes(options.change));
    const Embedded::Expected<void> saved =
        saveDrawing(*drawing.database(), options.change.files.names.front(), static_cast<QeDb::QeDbDwgVersion>(version),
                    options.force ? Embedded::Overwriting::drawings : Embedded::Overwriting::refused, output);
    report.events = reactor.events();
    if (saved)
        report.version = version;
    else
        failSave(report, options, drawing, saved.error());
    return report;
}

Json convertedAsJson(const ConvertOptions& options, const ConvertReport& report, const Output& output)
{
    Json json = {{"file", options.file},
                 {"drawingVersion", jsonValue(report.version)},
                 {"result", report.result},
                 {"events", eventsAsJson(report.events)}};
    if (report.failure)
        json["error"] = errorAsJson(output.command(), *report.failure);
    return json;
}

void printConverted(const ConvertOptions& options, const ConvertReport& report, Output& output)
{
    const std::string& target = options.change.files.names.front();
    printEvents(options.file, report.events, options.change, output);
    if (report.failure)
        output.error(report.failure->subject(), report.failure->what());
    else if (target != kStandardStream)
        output.confirm(options.file, fmt::format("converted to drawing version {}{}", *report.version,
                                                 options.isReplaced() ? "" : ", in " + target));
}

ExitStatus runConvert(ConvertOptions& options, Output& output)
{
    const int version = integerArgument("--drawing-version", options.version, QeDb::kOldestDwg, QeDb::kCurrentDwg);
    checkFileNames({options.file}, false, output);
    options.change.files.names = {options.isReplaced() ? options.file : options.target};
    checkChangeOptions(options.change, output);
    return forEachDrawing({options.file}, output, [&](const std::string&) {
        const ConvertReport report = convertDrawing(options, version, output);
        printConverted(options, report, output);
        return DrawingOutcome{report.failure ? ExitStatus::failed : ExitStatus::done,
                              convertedAsJson(options, report, output)};
    });
}

constexpr const char* kConvertDetails =
    "The drawing is saved as the host saves it: the module turns what it keeps in the drawing into the forms of that "
    "version. Below version 30 these are the legacy projection record, the definition xrecord and well-known text in "
    "the GeoData object; from 30 on it is only the GeoData text.\n\n"
    "A drawing whose coordinate system cannot be read, or does not fit into the older forms, is refused; the drawing "
    "and OUT stay unchanged. With --force an existing drawing OUT is replaced, completely or not at all; a file of "
    "another kind is never replaced. A drawing from standard input is printed, unless -o is given.\n\n"
    "The coordinate system stays the same and no reactor is notified, so events is empty in JSON. drawingVersion is "
    "the version that was written, or null if nothing was written.";

std::vector<Command> declareConvert(CLI::App& program)
{
    auto options = std::make_shared<ConvertOptions>();
    CLI::App* app = addCommand(
        program, {"convert",
                  "Save a drawing in another drawing version",
                  {"convert [OPTIONS] FILE --drawing-version N", "convert [OPTIONS] FILE --drawing-version N -o OUT"},
                  kConvertDetails,
                  {{"Write a copy for older programs", "orvelcs convert plan.qedb --drawing-version 29 -o old.qedb"},
                   {"Convert a drawing in its place", "orvelcs convert plan.qedb --drawing-version 27"}}});
    addArgument(*app, "FILE", options->file, "the drawing; - is standard input")->required();
    addArgument(*app, "--drawing-version N", options->version, "the drawing version, 21 to 33", {.oldNames = {"--to"}})
        ->required();
    options->targetOption = addArgument(*app, "-o,--output OUT", options->target,
                                        "write the drawing to OUT and leave FILE unchanged; - prints the drawing");
    app->add_flag("--force", options->force, "overwrite OUT if it is a drawing");
    addChangeOptions(*app, options->change);
    return {{app, [options](Output& output) { return runConvert(*options, output); }}};
}

const CommandRegistration kConvertCommand({HelpGroup::drawings, 6}, declareConvert);

} // namespace

} // namespace Orvelcs
