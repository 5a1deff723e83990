// A command of the program: where it stands in the command line, and what it does.
#pragma once

#include <compare>
#include <functional>
#include <string>
#include <vector>

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>

#include "orvelcs/cli/command_text.h"
#include "orvelcs/cli/output.h"

namespace Orvelcs {

struct Command {
    CLI::App* app = nullptr;
    std::function<ExitStatus(Output&)> run;
};

/// Adds a command to the program, or to the command that it is a part of.
CLI::App* addCommand(CLI::App& parent, const CommandText& text);

/// Adds an option or a positional argument. "--kind N" is the option --kind, whose value the help calls N.
CLI::Option* addArgument(CLI::App& command, const std::string& name, std::string& value, const std::string& description,
                         const ValueText& valueText = {});
CLI::Option* addArguments(CLI::App& command, const std::string& name, std::vector<std::string>& values,
                          const std::string& description, const ValueText& valueText = {});

/// Marks the arguments that the parser would change: it splits "[a,b]" in two, and reads an option behind "--" where a
/// positional argument has come before. The flag kSeparatorFlag replaces the "--". addArgument and addArguments remove
/// the mark from the values.
inline constexpr const char* kSeparatorFlag = "--_";
std::vector<std::string> markArguments(const std::vector<std::string>& arguments);
std::string removeMark(const std::string& argument);

/// The number that an option has as its value; throws Failure for wrong usage unless it is a whole number from `least`
/// to `most`.
int integerArgument(const std::string& option, const std::string& text, int least, int most);
/// The text of an argument; throws Failure for wrong usage when it is empty or not UTF-8.
std::wstring wideArgument(const std::string& argument, const std::string& text);

enum class HelpGroup { drawings, catalog, transformations, program };

/// Where the help lists a command: after those of the groups before its own, and of lower numbers in its own.
struct HelpPlace {
    HelpGroup group;
    int number;

    auto operator<=>(const HelpPlace&) const = default;
};

/// Makes the commands of one file known to the program by a constant in that file:
/// `const CommandRegistration kShowCommand({HelpGroup::drawings, 4}, declareShow);`
class CommandRegistration {
public:
    using Declare = std::vector<Command> (*)(CLI::App& program);
    CommandRegistration(HelpPlace place, Declare declare);
};

/// Adds every registered command to the program.
std::vector<Command> declareCommands(CLI::App& program);

} // namespace Orvelcs
