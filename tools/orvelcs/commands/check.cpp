// check: all that is wrong with drawings, and saving what can be read.
#include <memory>

#include <fmt/format.h>

#include "embedded/base/hex.h"
#include "embedded/base/path.h"
#include "embedded/host/drawing_file/drawing_check.h"
#include "embedded/host/drawing_file/drawing_salvage.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/display_text.h"
#include "orvelcs/cli/error_document.h"
#include "orvelcs/cli/input.h"
#include "orvelcs/cli/wait.h"
#include "orvelcs/drawing/batch.h"
#include "orvelcs/drawing/drawings.h"

namespace Orvelcs {
namespace {

struct CheckOptions {
    DrawingFiles files;
    std::string salvage;
    CLI::Option* salvageOption = nullptr;

    bool salvages() const { return salvageOption->count() > 0; }
};

Json faultsAsJson(const Embedded::DrawingFaults& faults)
{
    Json array = Json::array();
    for (const Embedded::DrawingFault& fault : faults.reported)
        array.push_back({{"place", fault.place}, {"message", fault.message}});
    return array;
}

Json salvageAsJson(const std::string& file, const Embedded::Salvage& salvage)
{
    Json lost = Json::array();
    for (const Embedded::LostObject& object : salvage.lost)
        lost.push_back({{"handle", Embedded::upperCaseHex(object.handle)},
                        {"class", object.className.empty() ? Json(nullptr) : Json(object.className)},
                        {"reason", object.reason}});
    return {{"file", file}, {"objects", salvage.objects}, {"lost", std::move(lost)}};
}

void printFaults(const std::string& file, const Embedded::DrawingFaults& faults, Output& output)
{
    for (const Embedded::DrawingFault& fault : faults.reported)
        output.error(file, fmt::format("{}: {}", fault.place, fault.message));
    if (faults.count > faults.reported.size())
        output.error(file, fmt::format("and {} faults more", faults.count - faults.reported.size()));
}

void printSalvage(const std::string& file, const Embedded::Salvage& salvage, Output& output)
{
    output.confirm(file, fmt::format("{} objects saved, {} lost", salvage.objects, salvage.lost.size()));
    for (const Embedded::LostObject& object : salvage.lost)
        output.line(oneLine(
            fmt::format("  lost: {} {}: {}", Embedded::upperCaseHex(object.handle), object.className, object.reason)));
}

/// What became of a drawing that should be saved from damage.
Embedded::Expected<void> salvage(const std::string& file, const CheckOptions& options, Json& json, Output& output)
{
    Embedded::Expected<Embedded::Salvage> salvaged = Embedded::salvageDrawing(
        Embedded::pathFromUtf8(file), Embedded::pathFromUtf8(options.salvage), waitFor(file, output));
    if (!salvaged)
        return Embedded::failure(std::move(salvaged).error());
    json["salvage"] = salvageAsJson(options.salvage, *salvaged);
    if (!output.json())
        printSalvage(options.salvage, *salvaged, output);
    return {};
}

DrawingOutcome fail(const std::string& file, const Embedded::Error& error, Json json, Output& output)
{
    const Failure failure = drawingFailure(file, error);
    output.error(file, failure.what());
    json["result"] = error.status;
    json["error"] = errorAsJson(output.command(), failure);
    return {ExitStatus::failed, std::move(json)};
}

DrawingOutcome checkOne(const std::string& file, const CheckOptions& options, Output& output)
{
    Json json = {{"file", file}, {"ok", false}, {"faults", Json::array()}, {"salvage", nullptr}};
    const Embedded::Expected<Embedded::DrawingFaults> result =
        Embedded::checkDrawing(Embedded::pathFromUtf8(file), waitFor(file, output));
    if (!result)
        return fail(file, result.error(), std::move(json), output);
    const Embedded::DrawingFaults& faults = *result;
    json["ok"] = faults.count == 0;
    json["faults"] = faultsAsJson(faults);
    printFaults(file, faults, output);
    if (faults.count == 0 && !output.json())
        output.confirm(file, "no fault was found");
    if (options.salvages())
        if (const Embedded::Expected<void> salvaged = salvage(file, options, json, output); !salvaged)
            return fail(salvaged.error().status == Qeapp::eFileExists ? options.salvage : file, salvaged.error(),
                        std::move(json), output);
    return {faults.count == 0 ? ExitStatus::done : ExitStatus::failed, std::move(json)};
}

ExitStatus runCheck(CheckOptions& options, Output& output)
{
    readFileList(options.files);
    checkFileNames(options.files.names, false, output);
    if (std::ranges::find(options.files.names, kStandardStream) != options.files.names.end())
        throw wrongUsage(kStandardStream, "a drawing is checked in its file");
    if (options.salvages() && options.files.isBatch())
        throw wrongUsage("--salvage", "saves one drawing, not several");
    if (options.salvages() && (options.salvage.empty() || options.salvage == kStandardStream))
        throw wrongUsage("--salvage", "needs the name of a new file");
    return forEachDrawing(options.files, output,
                          [&](const std::string& file) { return checkOne(file, options, output); });
}

std::vector<Command> declareCheck(CLI::App& program)
{
    auto options = std::make_shared<CheckOptions>();
    CLI::App* app = addCommand(
        program,
        {"check",
         "Read drawings completely and report their faults",
         {"check [OPTIONS] FILE...", "check [OPTIONS] FILE --salvage OUT"},
         "Each drawing is read page by page, row by row and object by object, and each fault is reported with its "
         "place. Every flipped bit of a file is found, while the other commands find only damage in what they read. "
         "The exit status is 1 if a fault is found. The drawings are never changed.\n\n"
         "--salvage writes every object that can be read into a new drawing and lists the objects that are lost. "
         "Dictionaries and xrecords without an owner are put into the dictionary SALVAGED of the named objects, by "
         "their handles. In JSON faults is an array of objects with place and message.",
         {{"Check a drawing", "orvelcs check plan.qedb"},
          {"Save what can be read of a damaged drawing", "orvelcs check damaged.qedb --salvage saved.qedb",
           ExitStatus::failed}}});
    addArguments(*app, "FILE", options->files.names, "the drawings");
    addFileListOptions(*app, options->files);
    options->salvageOption =
        addArgument(*app, "--salvage OUT", options->salvage, "write what can be read into a new drawing");
    return {{app, [options](Output& output) { return runCheck(*options, output); }}};
}

const CommandRegistration kCheckCommand({HelpGroup::drawings, 7}, declareCheck);

} // namespace

} // namespace Orvelcs
