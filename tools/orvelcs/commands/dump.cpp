// dump: a drawing as text.
#include <memory>

#include "embedded/host/drawing_file/drawing_dump.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/error_document.h"
#include "orvelcs/drawing/batch.h"
#include "orvelcs/drawing/drawings.h"
#include "orvelcs/output/result_names.h"

namespace Orvelcs {
namespace {

struct DumpOptions {
    std::string file;
};

ExitStatus runDump(const DumpOptions& options, Output& output)
{
    checkFileNames({options.file}, false, output);
    return forEachDrawing({options.file}, output, [&](const std::string& file) {
        Json json = {{"file", file}, {"text", nullptr}};
        OpenDrawing drawing(file, Embedded::DrawingAccess::reading, output);
        Embedded::Expected<std::string> text =
            drawing.load().and_then([&] { return Embedded::dumpDrawing(*drawing.database()); });
        if (!text) {
            const std::string error = describe(file, text.error());
            output.error(file, error);
            json["result"] = text.error().status;
            json["error"] = errorAsJson(output.command(), file, resultCode(Embedded::hostStatus(text)), error);
            return DrawingOutcome{ExitStatus::failed, std::move(json)};
        }
        if (!output.json())
            output.write(*text);
        json["text"] = std::move(*text);
        return DrawingOutcome{ExitStatus::done, std::move(json)};
    });
}

std::vector<Command> declareDump(CLI::App& program)
{
    auto options = std::make_shared<DumpOptions>();
    CLI::App* app = addCommand(
        program,
        {"dump",
         "Print everything that a drawing holds as text",
         {"dump [OPTIONS] FILE"},
         "The text has object after object. Equal drawings give equal texts, and each difference is on a line of "
         "its own, so that the texts suit version control.",
         {{"Print a drawing as text", "orvelcs dump plan.qedb"},
          {"Save the text of a drawing", "orvelcs dump plan.qedb > plan.txt"}}});
    addArgument(*app, "FILE", options->file, "the drawing; - is standard input")->required();
    return {{app, [options](Output& output) { return runDump(*options, output); }}};
}

const CommandRegistration kDumpCommand({HelpGroup::drawings, 8}, declareDump);

} // namespace

} // namespace Orvelcs
