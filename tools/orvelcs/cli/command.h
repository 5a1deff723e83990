// A command of the program: where it stands in the command line, and what it does.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include "orvelcs/cli/output.h"

namespace Orvelcs {

struct Command {
    CLI::App* app = nullptr;
    std::function<ExitStatus(Output&)> run;
};

/// What a command is called, does and expects.
struct CommandText {
    std::string name;
    std::string description;
    std::vector<std::string> usage; // without the program's name, one for each form
    std::string details;            // below the options
};

/// Makes the help begin with these forms of use.
void setUsage(CLI::App& app, const std::vector<std::string>& usage);

/// Adds a command to the program, or to the command that it is a part of.
CLI::App* addCommand(CLI::App& parent, const CommandText& text);

/// Options and positional arguments without the type names that would stand in the way of the help's own words.
CLI::Option* addArgument(CLI::App& command, const std::string& name, std::string& value,
                         const std::string& description);
CLI::Option* addArguments(CLI::App& command, const std::string& name, std::vector<std::string>& values,
                          const std::string& description);

/// The parser takes "[a,b]" for a list of two, and knows "--" before a command's first positional argument alone. An
/// argument in that form is marked before parsing, and so is each that follows a "--", which is left out itself; the
/// mark is taken off what addArgument and addArguments deliver. The flag kSeparatorFlag stands in its place.
inline constexpr const char* kSeparatorFlag = "--_";
std::vector<std::string> keptWhole(const std::vector<std::string>& arguments);
std::string withoutMark(const std::string& argument);

/// The number that an option has as its value; throws Failure for wrong usage unless it is a whole number from `least`
/// to `most`.
int integerArgument(const std::string& option, const std::string& text, int least, int most);
/// The text of an argument; throws Failure for wrong usage when it is empty or not UTF-8.
std::wstring wideArgument(const std::string& argument, const std::string& text);

/// Makes the commands of one file known to the program: `const CommandRegistration kShowCommand("show", declareShow);`
/// in that file. The name also stands in a list in command.cpp, which gives the order of the help.
class CommandRegistration {
public:
    using Declare = std::vector<Command> (*)(CLI::App& program);
    CommandRegistration(const std::string& name, Declare declare);
};

/// Adds every registered command to the program.
std::vector<Command> declareCommands(CLI::App& program);

} // namespace Orvelcs
