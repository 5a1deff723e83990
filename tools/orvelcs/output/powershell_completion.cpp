// The script for PowerShell: tables of words, and a block that looks them up.
#include <fmt/format.h>
#include <fmt/ranges.h>

#include "orvelcs/output/completion.h"

namespace Orvelcs {
namespace {

/// Where the block offers nothing, PowerShell itself offers the names of files.
constexpr const char* kPowershellBlock = R"(
    $words = @($commandAst.CommandElements | Where-Object { $_.Extent.EndOffset -lt $cursorPosition } |
        Select-Object -Skip 1 | ForEach-Object { $_.ToString() })
    $command = ''
    $previous = ''
    foreach ($word in $words) {
        $next = "$command $word".Trim()
        if ($withValues -cnotcontains $previous -and $subcommands.ContainsKey($next)) { $command = $next }
        $previous = $word
    }
    if ($withValues -ccontains $previous) {
        $found = $values["$command $previous".Trim()]
        if ($null -eq $found) { $found = $values[$previous] }
    } elseif ($wordToComplete.StartsWith('-')) {
        $found = $options[$command] + $globalOptions
    } else {
        $found = $subcommands[$command] + $arguments[$command]
    }
    $found | Where-Object { $_ -and $_.StartsWith($wordToComplete) } |
        ForEach-Object { [System.Management.Automation.CompletionResult]::new($_) }
}
)";

std::string powershellArray(const std::vector<std::string>& words)
{
    std::vector<std::string> quoted;
    for (const std::string& word : words)
        quoted.push_back(singleQuoted(word, "''"));
    return fmt::format("@({})", fmt::join(quoted, ", "));
}

std::string powershellEntry(const std::string& key, const std::vector<std::string>& words)
{
    return fmt::format("        {} = {}\n", singleQuoted(key, "''"), powershellArray(words));
}

std::vector<std::string> choiceWords(const OptionEntry& entry, const CommandTable& table)
{
    std::vector<std::string> words;
    for (const Choice& choice : choicesFor(entry, table))
        words.push_back(choice.value);
    return words;
}

std::vector<std::string> namesOf(const std::vector<OptionEntry>& options)
{
    std::vector<std::string> names;
    for (const OptionEntry& option : options)
        names.insert(names.end(), option.names.begin(), option.names.end());
    return names;
}

std::string powershellValues(const std::string& prefix, const std::vector<OptionEntry>& options,
                             const CommandTable& table)
{
    std::string entries;
    for (const OptionEntry& option : options)
        for (const std::string& name : option.names)
            if (const std::vector<std::string> words = choiceWords(option, table); !words.empty())
                entries += powershellEntry(prefix + name, words);
    return entries;
}

} // namespace

std::string powershellCompletion(const CommandTable& table)
{
    std::string subcommands = powershellEntry("", table.program.subcommands);
    std::string options;
    std::string values = powershellValues("", table.globalOptions, table);
    std::string arguments;
    for (const CommandEntry& command : table.commands) {
        subcommands += powershellEntry(command.name, command.subcommands);
        options += powershellEntry(command.name, namesOf(command.options));
        values += powershellValues(command.name + " ", command.options, table);
        for (const OptionEntry& argument : command.arguments)
            if (const std::vector<std::string> words = choiceWords(argument, table); !words.empty())
                arguments += powershellEntry(command.name, words);
    }
    return fmt::format("# Completion for PowerShell, made by \"orvelcs completion powershell\".\n\n"
                       "Register-ArgumentCompleter -Native -CommandName orvelcs -ScriptBlock {{\n"
                       "    param($wordToComplete, $commandAst, $cursorPosition)\n"
                       "    $withValues = {}\n    $globalOptions = {}\n    $subcommands = @{{\n{}    }}\n"
                       "    $options = @{{\n{}    }}\n    $values = @{{\n{}    }}\n    $arguments = @{{\n{}    }}\n{}",
                       powershellArray(optionsWithValues(table)), powershellArray(namesOf(table.globalOptions)),
                       subcommands, options, values, arguments, kPowershellBlock);
}

} // namespace Orvelcs
