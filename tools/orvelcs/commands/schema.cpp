// schema: the JSON Schemas of what the commands print with --json.
#include <algorithm>
#include <iterator>
#include <memory>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "orvelcs/cli/command.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/suggestion.h"
#include "orvelcs/output/schemas.h"

namespace Orvelcs {
namespace {

struct SchemaOptions {
    std::vector<std::string> command; // its words
};

/// "catalog search" for catalog-search.
std::string commandOf(const Schema& schema)
{
    std::string command(schema.name);
    std::ranges::replace(command, '-', ' ');
    return command;
}

std::vector<std::string> commandsWithSchema()
{
    std::vector<std::string> commands;
    for (const Schema& schema : schemas())
        commands.push_back(commandOf(schema));
    return commands;
}

void listSchemas(Output& output)
{
    const std::vector<std::string> commands = commandsWithSchema();
    if (output.json())
        return output.document(commands);
    for (const std::string& command : commands)
        output.line(command);
}

/// The parts of a command that does nothing by itself, or the nearest.
std::vector<std::string> nearestCommands(const std::string& command)
{
    const std::vector<std::string> known = commandsWithSchema();
    std::vector<std::string> parts;
    std::ranges::copy_if(known, std::back_inserter(parts),
                         [&](const std::string& name) { return name.starts_with(command + " "); });
    return parts.empty() ? nearest(command, known) : parts;
}

const Schema& findSchema(const std::vector<std::string>& words)
{
    std::string command = fmt::format("{}", fmt::join(words, " "));
    std::ranges::replace(command, '-', ' ');
    const auto found = std::ranges::find(schemas(), command, commandOf);
    if (found != schemas().end())
        return *found;
    throw wrongUsage(command, "no such schema; orvelcs schema lists them" + nearestClause(nearestCommands(command)));
}

ExitStatus runSchema(const SchemaOptions& options, Output& output)
{
    if (options.command.empty())
        listSchemas(output);
    else
        output.document(selfContained(findSchema(options.command)));
    return ExitStatus::done;
}

std::vector<Command> declareSchema(CLI::App& program)
{
    auto options = std::make_shared<SchemaOptions>();
    CLI::App* app = addCommand(
        program, {"schema",
                  "Print the JSON Schema of what a command prints with --json",
                  {"schema [OPTIONS]", "schema [OPTIONS] COMMAND..."},
                  "Without COMMAND it lists what has a schema: commands such as catalog search, version for\n"
                  "--version, and error for what a command prints that failed and has nothing else to print.\n"
                  "A schema is complete in itself and is of JSON Schema 2020-12.",
                  {{"List what has a schema", "orvelcs schema"},
                   {"Print the schema of what show prints", "orvelcs schema show"}}});
    addArguments(*app, "COMMAND", options->command, "the command, such as show or catalog search");
    return {{app, [options](Output& output) { return runSchema(*options, output); }}};
}

const CommandRegistration kSchemaCommand({HelpGroup::program, 4}, declareSchema);

} // namespace

} // namespace Orvelcs
