// new: empty drawings.
#include <memory>

#include <fmt/format.h>

#include "orvelcs/cli/command.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/drawing/batch.h"
#include "orvelcs/drawing/drawings.h"

namespace Orvelcs {
namespace {

struct NewOptions {
    DrawingFiles files;
    std::string version;
    bool force = false;
};

struct NewReport {
    std::optional<int> result;        // none for a file that exists
    std::optional<std::string> error; // none where it was made
};

NewReport makeDrawing(const std::string& file, int version, bool force, Output& output)
{
    QeDbDatabase database(static_cast<QeDb::QeDbDwgVersion>(version));
    const auto overwriting = force ? Embedded::Overwriting::noDatabase : Embedded::Overwriting::refused;
    const Embedded::Expected<void> saved = saveDrawing(database, file, database.drawingVersion(), overwriting, output);
    if (saved)
        return {Qeapp::eOk, {}};
    if (saved.error().status == Qeapp::eFileExists)
        return {std::nullopt, kExists};
    return {saved.error().status, describe(file, saved.error())};
}

DrawingOutcome makeAndReport(const std::string& file, int version, bool force, Output& output)
{
    const NewReport report = makeDrawing(file, version, force, output);
    if (!report.error) {
        if (file != kStandardStream)
            output.confirm(file, fmt::format("new drawing, version {}", version));
        return {ExitStatus::done, {{"file", file}, {"drawingVersion", version}}};
    }
    output.error(file, *report.error);
    return {
        ExitStatus::failed,
        {{"file", file}, {"drawingVersion", nullptr}, {"result", jsonValue(report.result)}, {"error", *report.error}}};
}

ExitStatus runNew(NewOptions& options, Output& output)
{
    readFileList(options.files);
    const int version = options.version.empty() ? QeDb::kCurrentDwg
                                                : integerArgument("--drawing-version", options.version,
                                                                  QeDb::kOldestDwg, QeDb::kCurrentDwg);
    checkFileNames(options.files.names, true, output);
    return forEachDrawing(options.files, output,
                          [&](const std::string& file) { return makeAndReport(file, version, options.force, output); });
}

std::vector<Command> declareNew(CLI::App& program)
{
    auto options = std::make_shared<NewOptions>();
    CLI::App* app = addCommand(
        program, {"new",
                  "Make empty drawings",
                  {"new [OPTIONS] FILE..."},
                  "A file that exists is refused. With --force the file holds either what it held before or the "
                  "whole new drawing at every moment.",
                  {{"Make a drawing", "orvelcs new new.qedb"},
                   {"Make two drawings that older programs read", "orvelcs new --drawing-version 27 a.qedb b.qedb"},
                   {"Make a drawing in a pipe", "orvelcs new - | orvelcs assign EPSG:25832 - | orvelcs show -"}}});
    addArguments(*app, "FILE", options->files.names, "the drawings to make; - prints one");
    addFileListOptions(*app, options->files);
    addArgument(*app, "--drawing-version N", options->version, "the drawing version, 21 to 33", {.defaultValue = "33"});
    app->add_flag("--force", options->force, "overwrite what exists, unless it is the database of another application");
    return {{app, [options](Output& output) { return runNew(*options, output); }}};
}

const CommandRegistration kNewCommand({HelpGroup::drawings, 1}, declareNew);

} // namespace

} // namespace Orvelcs
