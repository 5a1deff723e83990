// commands: the table of all commands, for programs and for the pages that are made from it.
#include <memory>

#include "orvelcs/cli/command.h"
#include "orvelcs/cli/command_table.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/output/manual_page.h"
#include "orvelcs/output/markdown_page.h"
#include "orvelcs/output/table.h"

namespace Orvelcs {
namespace {

struct CommandsOptions {
    bool man = false;
    bool markdown = false;
};

void printCommands(const CommandTable& table, Output& output)
{
    std::vector<TableRow> rows;
    for (const CommandEntry& command : table.commands)
        rows.push_back({command.name, command.description});
    printTable(rows, output);
}

ExitStatus runCommands(const CommandsOptions& options, const CLI::App& program, Output& output)
{
    if ((options.man ? 1 : 0) + (options.markdown ? 1 : 0) + (output.json() ? 1 : 0) > 1)
        throw wrongUsage(options.man ? "--man" : "--markdown",
                         "is one form of the table and another is asked for, too");
    const CommandTable table = describeProgram(program);
    if (options.man)
        output.write(manualPage(table));
    else if (options.markdown)
        output.write(markdownPage(table));
    else if (output.json())
        output.document(asJson(table));
    else
        printCommands(table, output);
    return ExitStatus::done;
}

std::vector<Command> declareCommandsCommand(CLI::App& program)
{
    auto options = std::make_shared<CommandsOptions>();
    CLI::App* app = addCommand(
        program, {"commands",
                  "List all commands",
                  {"commands [--json | --man | --markdown]"},
                  "With --json each command has its usage, description, arguments, options, exit statuses and "
                  "examples. An option has its names, the type of its value, its default and its choices; an "
                  "option of every command is marked as global.",
                  {{"List all commands", "orvelcs commands"},
                   {"Print the names of all options of a command",
                    "orvelcs commands --json | jq -r '.[] | select(.name == \"show\") | .options[].names[]'"},
                   {"Save the manual page", "orvelcs commands --man > orvelcs.1"}}});
    app->add_flag("--man", options->man, "print the manual page");
    app->add_flag("--markdown", options->markdown, "print the page on the command line in Markdown");
    return {{app, [options, &program](Output& output) { return runCommands(*options, program, output); }}};
}

const CommandRegistration kCommandsCommand({HelpGroup::program, 2}, declareCommandsCommand);

} // namespace

} // namespace Orvelcs
