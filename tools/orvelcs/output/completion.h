// Completion scripts for shells, made from the table of commands.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "orvelcs/cli/command_table.h"

namespace Orvelcs {

std::string bashCompletion(const CommandTable& table);
std::string zshCompletion(const CommandTable& table);
std::string fishCompletion(const CommandTable& table);
std::string powershellCompletion(const CommandTable& table);

/// What the scripts have in common.
bool takesFiles(const OptionEntry& entry);
/// The options of a command, and those of every command.
std::vector<OptionEntry> allOptions(const CommandEntry& command, const CommandTable& table);
/// The names of all options that take a value, each once.
std::vector<std::string> optionsWithValues(const CommandTable& table);
/// The values that an option or argument takes; for one that takes a command the names of all.
std::vector<Choice> choicesFor(const OptionEntry& entry, const CommandTable& table);
/// The text in single quotes. `escapedQuote` stands for a quote in it.
std::string singleQuoted(const std::string& text, std::string_view escapedQuote);

} // namespace Orvelcs
