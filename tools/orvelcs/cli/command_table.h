// The table of all commands, from which the help, the pages and the completions are made.
#pragma once

#include <string>
#include <vector>

#include "orvelcs/cli/command_text.h"
#include "orvelcs/cli/json.h"

namespace Orvelcs {

enum class ValueType { flag, text, integer, number, file, folder, system, command };

/// An option, or an argument that is known by its position.
struct OptionEntry {
    std::vector<std::string> names; // "-o", "--output"; for an argument one name, such as "FILE"
    std::string value;              // how the help calls the value; empty for a flag
    ValueType type = ValueType::flag;
    std::string description;
    std::vector<Choice> choices;
    std::string defaultValue;
    bool isRequired = false;
    bool isRepeated = false;
    bool isGlobal = false; // an option of every command

    /// "-o, --output FILE", "SYSTEM", "FILE...".
    std::string label() const;
};

struct CommandEntry {
    std::string name; // "catalog search"; empty for the program
    std::string description;
    std::vector<std::string> usage; // with the program's name
    std::string details;
    std::vector<OptionEntry> arguments;
    std::vector<OptionEntry> options;     // without those of every command
    std::vector<std::string> subcommands; // by their last words
    std::vector<ExitMeaning> exitStatuses;
    std::vector<CommandExample> examples;
};

CommandEntry describeCommand(const CLI::App& command);

struct CommandTable {
    CommandEntry program;
    std::vector<OptionEntry> globalOptions;
    std::vector<CommandEntry> commands; // in the order of the help, each before its own sub-commands
};

CommandTable describeProgram(const CLI::App& program);
std::vector<OptionEntry> describeGlobalOptions(const CLI::App& program);

/// An array with an object for each command. The options of each include those of every command.
Json asJson(const CommandTable& table);

/// The sentence about what an option takes: the description, the choices and the default.
std::string fullDescription(const OptionEntry& option);

} // namespace Orvelcs
