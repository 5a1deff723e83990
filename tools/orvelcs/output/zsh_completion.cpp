// The script for zsh: a function for each command, with its options and arguments as _arguments takes them.
#include <algorithm>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "orvelcs/output/completion.h"

namespace Orvelcs {
namespace {

/// The text with what _arguments would read as the end of a part escaped.
std::string zshText(const std::string& text)
{
    std::string escaped;
    for (const char character : text) {
        if (std::string_view("[]:\\()\"").find(character) != std::string_view::npos)
            escaped += '\\';
        escaped += character;
    }
    return escaped;
}

std::string zshAction(const OptionEntry& entry, const CommandTable& table)
{
    std::vector<std::string> values;
    for (const Choice& choice : choicesFor(entry, table))
        values.push_back(choice.meaning.empty() ? choice.value
                                                : fmt::format("{}\\:\"{}\"", choice.value, zshText(choice.meaning)));
    if (!values.empty())
        return fmt::format("(({}))", fmt::join(values, " "));
    if (takesFiles(entry))
        return "_orvelcs_files";
    return entry.type == ValueType::folder ? "_files -/" : " ";
}

std::string zshOption(const OptionEntry& option, const CommandTable& table)
{
    std::string lines;
    const std::string excluded = fmt::format("({})", fmt::join(option.names, " "));
    for (const std::string& name : option.names) {
        const bool isFlag = option.type == ValueType::flag;
        const char* joint = isFlag ? "" : name.starts_with("--") ? "=" : "+";
        const std::string value = isFlag ? "" : fmt::format(":{}:{}", zshText(option.value), zshAction(option, table));
        lines += " \\\n        " + singleQuoted(fmt::format("{}{}{}[{}]{}", option.isRepeated ? "*" : excluded, name,
                                                            joint, zshText(option.description), value),
                                                "'\\''");
    }
    return lines;
}

std::string zshArguments(const CommandEntry& command, const CommandTable& table)
{
    std::string lines;
    for (const OptionEntry& argument : command.arguments)
        lines +=
            " \\\n        " + singleQuoted(fmt::format("{}:{}:{}", argument.isRepeated ? "*" : "",
                                                       zshText(argument.names.front()), zshAction(argument, table)),
                                           "'\\''");
    return lines;
}

std::string zshFunction(const std::string& command)
{
    std::string name = command.empty() ? "_orvelcs" : "_orvelcs_" + command;
    std::ranges::replace(name, ' ', '_');
    return name;
}

/// The part that completes the sub-commands, or hands the rest of the line to one of them.
std::string zshSubcommands(const CommandEntry& command, const CommandTable& table)
{
    std::string names;
    std::string calls;
    for (const std::string& word : command.subcommands) {
        const std::string full = command.name.empty() ? word : command.name + " " + word;
        const auto entry = std::ranges::find(table.commands, full, &CommandEntry::name);
        names += " \\\n            " + singleQuoted(word + ":" + zshText(entry->description), "'\\''");
        calls += fmt::format("        {}) {} ;;\n", word, zshFunction(full));
    }
    const bool takesFileNames = std::ranges::any_of(command.arguments, takesFiles);
    return fmt::format(
        "    case $state in\n    command)\n        local -a names=({})\n        _describe command names\n{}"
        "        ;;\n    rest)\n        case $line[1] in\n{}{}        esac ;;\n    esac\n",
        names, takesFileNames ? "        _orvelcs_files\n" : "", calls,
        takesFileNames ? "        *) _orvelcs_files ;;\n" : "");
}

std::string zshCommand(const CommandEntry& command, const CommandTable& table)
{
    std::string options;
    for (const OptionEntry& option : command.options)
        options += zshOption(option, table);
    const std::string start = fmt::format("\n{}() {{\n", zshFunction(command.name));
    if (command.subcommands.empty())
        return start + "    _arguments -s -S $_orvelcs_options" + options + zshArguments(command, table) + "\n}\n";
    return start + "    local curcontext=$curcontext state line\n    _arguments -C -s -S $_orvelcs_options" + options +
           " \\\n        '1: :->command' '*:: :->rest'\n" + zshSubcommands(command, table) + "}\n";
}

} // namespace

std::string zshCompletion(const CommandTable& table)
{
    std::string script = "#compdef orvelcs\n# Completion for zsh, made by \"orvelcs completion zsh\".\n\ntypeset -ga "
                         "_orvelcs_options=(";
    for (const OptionEntry& option : table.globalOptions)
        script += zshOption(option, table);
    script +=
        ")\n\n# The names of files, of @FILE behind the @.\n_orvelcs_files() {\n    compset -P @\n    _files\n}\n";
    for (const CommandEntry& command : table.commands)
        script += zshCommand(command, table);
    return script + zshCommand(table.program, table) +
           "\nif [[ $funcstack[1] == _orvelcs ]]; then\n    _orvelcs \"$@\"\nelse\n    compdef _orvelcs orvelcs\nfi\n";
}

} // namespace Orvelcs
