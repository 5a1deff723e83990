// The script for bash: a table of words in case statements, and a function that looks them up.
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "orvelcs/output/completion.h"

namespace Orvelcs {
namespace {

constexpr const char* kBashFunction = R"(
_orvelcs() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}
    local command='' word index subcommands options choices kind arguments
    # The line is cut at "=", so that --option=value is three words.
    if [[ $current == '=' ]]; then
        current=''
    elif [[ $previous == '=' ]]; then
        previous=${COMP_WORDS[COMP_CWORD-2]}
    fi
    COMPREPLY=()
    _orvelcs_words ''
    for ((index = 1; index < COMP_CWORD; ++index)); do
        word=${COMP_WORDS[index]}
        if [[ $word == '--' ]]; then
            _orvelcs_files "$current"
            return
        elif [[ " $_orvelcs_with_values " == *" $word "* ]]; then
            ((++index))
            [[ ${COMP_WORDS[index]} == '=' ]] && ((++index))
        elif [[ " $subcommands " == *" $word "* ]]; then
            command="${command:+$command }$word"
            _orvelcs_words "$command"
        fi
    done
    if [[ " $_orvelcs_with_values " == *" $previous "* ]]; then
        _orvelcs_values "$command $previous"
        case $kind in
        choices) COMPREPLY=($(compgen -W "$choices" -- "$current")) ;;
        files) _orvelcs_files "$current" ;;
        folders) _orvelcs_files "$current" -d ;;
        esac
    elif [[ $current == -* ]]; then
        COMPREPLY=($(compgen -W "$options" -- "$current"))
    else
        COMPREPLY=($(compgen -W "$subcommands $choices" -- "$current"))
        if [[ $arguments == files ]]; then
            local words=("${COMPREPLY[@]}")
            _orvelcs_files "$current"
            COMPREPLY=("${words[@]}" "${COMPREPLY[@]}")
        fi
    fi
}

# The names of files, or with -d of folders; of @FILE behind the @.
_orvelcs_files() {
    local IFS=$'\n' prefix=''
    [[ $1 == @* ]] && prefix=@
    compopt -o filenames 2>/dev/null
    COMPREPLY=($(compgen -P "$prefix" "${2:--f}" -- "${1#@}"))
}

complete -F _orvelcs orvelcs
)";

std::string bashChoices(const std::vector<Choice>& choices)
{
    std::vector<std::string> words;
    for (const Choice& choice : choices)
        words.push_back(choice.value);
    return fmt::format("choices='{}'", fmt::join(words, " "));
}

std::string bashWords(const CommandEntry& command, const CommandTable& table)
{
    std::vector<std::string> options;
    for (const OptionEntry& option : allOptions(command, table))
        options.insert(options.end(), option.names.begin(), option.names.end());
    std::string choices = "choices=''";
    const char* arguments = "''";
    for (const OptionEntry& argument : command.arguments) {
        if (takesFiles(argument))
            arguments = "files";
        if (const std::vector<Choice> known = choicesFor(argument, table); !known.empty())
            choices = bashChoices(known);
    }
    return fmt::format("    '{}')\n        subcommands='{}'\n        options='{}'\n        {} arguments={} ;;\n",
                       command.name, fmt::join(command.subcommands, " "), fmt::join(options, " "), choices, arguments);
}

/// A line of the table of values. `command` is a pattern.
std::string bashValue(const std::string& command, const OptionEntry& option, const CommandTable& table)
{
    const std::vector<Choice> choices = choicesFor(option, table);
    std::string action;
    if (!choices.empty())
        action = "kind=choices " + bashChoices(choices);
    else if (takesFiles(option) || option.type == ValueType::folder)
        action = takesFiles(option) ? "kind=files" : "kind=folders";
    std::vector<std::string> patterns;
    for (const std::string& name : option.names)
        patterns.push_back(command + "' " + name + "'");
    return action.empty() ? "" : fmt::format("    {}) {} ;;\n", fmt::join(patterns, " | "), action);
}

} // namespace

std::string bashCompletion(const CommandTable& table)
{
    std::string words = bashWords(table.program, table);
    std::string values;
    for (const OptionEntry& option : table.globalOptions)
        values += bashValue("*", option, table);
    for (const CommandEntry& command : table.commands) {
        words += bashWords(command, table);
        for (const OptionEntry& option : command.options)
            values += bashValue("'" + command.name + "'", option, table);
    }
    return fmt::format("# Completion for bash, made by \"orvelcs completion bash\".\n\n_orvelcs_with_values='{}'\n\n"
                       "_orvelcs_words() {{\n    case $1 in\n{}    esac\n}}\n\n"
                       "_orvelcs_values() {{\n    kind=''\n    case $1 in\n{}    esac\n}}\n{}",
                       fmt::join(optionsWithValues(table), " "), words, values, kBashFunction);
}

} // namespace Orvelcs
