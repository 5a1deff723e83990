// The script for fish: one line for each word, with the command that it belongs to.
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "orvelcs/output/completion.h"

namespace Orvelcs {
namespace {

constexpr const char* kFishFunctions = R"(
# The command that the line names so far, such as "catalog search".
function __orvelcs_command
    set -l command ''
    set -l isValue 0
    for word in (commandline -opc)[2..-1]
        if test $isValue = 1
            set isValue 0
        else if contains -- $word $__orvelcs_with_values
            set isValue 1
        else
            set -l next (string trim -- "$command $word")
            contains -- $next $__orvelcs_commands; and set command $next
        end
    end
    echo $command
end

function __orvelcs_is
    set -l command (__orvelcs_command)
    test "$command" = "$argv[1]"
end

complete -c orvelcs -f
)";

std::string fishText(const std::string& text)
{
    std::string escaped;
    for (const char character : text)
        escaped += character == '\\' ? "\\\\" : std::string(1, character);
    return singleQuoted(escaped, "\\'");
}

std::string fishValues(const OptionEntry& entry, const CommandTable& table)
{
    std::vector<std::string> lines;
    for (const Choice& choice : choicesFor(entry, table))
        lines.push_back(choice.meaning.empty() ? choice.value
                                               : fmt::format("{}\\t{}", choice.value, fishText(choice.meaning)));
    return lines.empty() ? "" : " -a " + fishText(fmt::format("{}", fmt::join(lines, " ")));
}

std::string fishOption(const std::string& condition, const OptionEntry& option, const CommandTable& table)
{
    std::string line = "complete -c orvelcs" + condition;
    for (const std::string& name : option.names)
        line += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    if (option.type == ValueType::folder)
        line += " -x -a '(__fish_complete_directories)'";
    else if (option.type != ValueType::flag)
        line += takesFiles(option) ? " -r -F" : " -x" + fishValues(option, table);
    return line + " -d " + fishText(option.description) + "\n";
}

std::string fishCommand(const CommandEntry& command, const CommandTable& table)
{
    const std::string condition = " -n \"__orvelcs_is " + singleQuoted(command.name, "") + "\"";
    std::string lines;
    for (const CommandEntry& subcommand : table.commands) {
        const std::string prefix = command.name.empty() ? "" : command.name + " ";
        if (subcommand.name.starts_with(prefix) && subcommand.name.find(' ', prefix.size()) == std::string::npos &&
            subcommand.name.size() > prefix.size())
            lines += fmt::format("complete -c orvelcs{} -a {} -d {}\n", condition,
                                 subcommand.name.substr(prefix.size()), fishText(subcommand.description));
    }
    for (const OptionEntry& option : command.options)
        lines += fishOption(condition, option, table);
    bool takesFileNames = false;
    for (const OptionEntry& argument : command.arguments) {
        takesFileNames = takesFileNames || takesFiles(argument);
        if (const std::string values = fishValues(argument, table); !values.empty())
            lines += "complete -c orvelcs" + condition + values + "\n";
    }
    return lines + (takesFileNames ? "complete -c orvelcs" + condition + " -F\n" : "");
}

} // namespace

std::string fishCompletion(const CommandTable& table)
{
    std::vector<std::string> names;
    for (const CommandEntry& command : table.commands)
        names.push_back(singleQuoted(command.name, ""));
    std::string lines = fishCommand(table.program, table);
    for (const OptionEntry& option : table.globalOptions)
        lines += fishOption("", option, table);
    for (const CommandEntry& command : table.commands)
        lines += fishCommand(command, table);
    return fmt::format(
        "# Completion for fish, made by \"orvelcs completion fish\".\n\nset -g __orvelcs_with_values {}\n"
        "set -g __orvelcs_commands {}\n{}{}",
        fmt::join(optionsWithValues(table), " "), fmt::join(names, " "), kFishFunctions, lines);
}

} // namespace Orvelcs
