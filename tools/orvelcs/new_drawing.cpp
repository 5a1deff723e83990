// new: empty drawings.
#include <memory>

#include <fmt/format.h>

#include "embedded/foundation/atomic_file.h"
#include "embedded/foundation/file_look_up.h"
#include "embedded/foundation/utf8_path.h"
#include "orvelcs/command.h"
#include "orvelcs/drawings.h"
#include "orvelcs/standard_streams.h"

namespace Orvelcs {
namespace {

struct NewOptions {
    std::vector<std::string> files;
    std::string version;
    bool force = false;
};

struct NewReport {
    std::optional<int> result; // none when the host was not asked
    std::string error;         // empty: it was made
};

bool exists(const std::string& file)
{
    // What cannot be looked at cannot be written either, and the save says why.
    return file != kStandardStream &&
           Embedded::lookUpFile(Embedded::pathFromUtf8(file)).kind != Embedded::FileKind::nothing;
}

/// Gives back the file that an interrupted save has put aside: it exists all the same.
Embedded::FileResult recover(const std::string& file)
{
    const auto failure =
        file != kStandardStream ? Embedded::recoverReplacedFile(Embedded::pathFromUtf8(file)) : std::nullopt;
    return failure ? Embedded::FileResult{Qeapp::eFileWriteFailed, failure->message} : Embedded::FileResult();
}

NewReport makeDrawing(const std::string& file, int version, bool force, Output& output)
{
    if (const Embedded::FileResult recovered = recover(file); recovered.status != Qeapp::eOk)
        return {recovered.status, describe(file, recovered)};
    if (!force && exists(file))
        return {std::nullopt, "exists; --force overwrites it"};
    QeDbDatabase database(static_cast<QeDb::QeDbDwgVersion>(version));
    const Embedded::FileResult saved = saveDrawing(database, file, database.drawingVersion(), output);
    return {saved.status, saved.status == Qeapp::eOk ? "" : describe(file, saved)};
}

DrawingOutcome makeAndReport(const std::string& file, int version, bool force, Output& output)
{
    const NewReport report = makeDrawing(file, version, force, output);
    if (report.error.empty()) {
        if (file != kStandardStream)
            output.confirm(file, fmt::format("new drawing, version {}", version));
        return {ExitStatus::done, {{"file", file}, {"drawingVersion", version}}};
    }
    output.error(file, report.error);
    return {
        ExitStatus::failed,
        {{"file", file}, {"drawingVersion", nullptr}, {"result", jsonValue(report.result)}, {"error", report.error}}};
}

ExitStatus runNew(const NewOptions& options, Output& output)
{
    const int version = options.version.empty()
                            ? QeDb::kCurrentDwg
                            : wholeNumber("--drawing-version", options.version, QeDb::kOldestDwg, QeDb::kCurrentDwg);
    checkFileNames(options.files, true, output);
    return forEachDrawing(options.files, output,
                          [&](const std::string& file) { return makeAndReport(file, version, options.force, output); });
}

} // namespace

Command declareNew(CLI::App& program)
{
    auto options = std::make_shared<NewOptions>();
    CLI::App* app = addCommand(program, {"new", "Make empty drawings", {"new [OPTIONS] FILE..."}, ""});
    addArguments(*app, "FILE", options->files, "the drawings to make; - prints one")->required();
    addArgument(*app, "--drawing-version N", options->version, "the drawing version, 21 to 33 (33)");
    app->add_flag("--force", options->force, "overwrite what exists");
    return {app, [options](Output& output) { return runNew(*options, output); }};
}

} // namespace Orvelcs
