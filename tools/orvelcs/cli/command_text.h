// What the help says of commands, options and arguments beside what the parser knows of them.
#pragma once

#include <string>
#include <vector>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include "orvelcs/cli/exit_status.h"

namespace Orvelcs {

/// A command line that a reader can copy. A test runs it in a folder with the drawings and texts that it names.
struct CommandExample {
    std::string purpose; // "Make a drawing"
    std::string command; // "orvelcs new new.qedb"
    ExitStatus status = ExitStatus::done;
};

struct ExitMeaning {
    ExitStatus status = ExitStatus::done;
    std::string meaning; // "a drawing has no coordinate system"
};

/// What a command is called, does and expects.
struct CommandText {
    std::string name;
    std::string description;
    std::vector<std::string> usage; // without the program's name, one for each form
    std::string details;            // below the options; see text_blocks.h for its form
    std::vector<CommandExample> examples = {};
    std::vector<ExitMeaning> exitStatuses = {}; // beside those of every command
};

/// A value that an option takes, and what it means where the word does not say it.
struct Choice {
    Choice(const char* choice, const char* itsMeaning = "") : value(choice), meaning(itsMeaning) {}

    std::string value;
    std::string meaning;
};

/// What an option or an argument takes.
struct ValueText {
    std::vector<Choice> choices = {}; // all that it takes, where these are few
    std::string defaultValue = {};
    std::vector<std::string> oldNames = {}; // still work, and are shown nowhere
};

/// The text of the program or of a command. Empty for one that was never set.
CommandText& textOf(const CLI::App& command);
ValueText& textOf(const CLI::Option& option);

} // namespace Orvelcs
