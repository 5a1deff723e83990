#include "orvelcs/cli/command.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <memory>
#include <optional>

#include <fmt/format.h>

#include "embedded/base/parse_number.h"
#include "embedded/base/text.h"
#include "orvelcs/cli/failure.h"

namespace Orvelcs {
namespace {

constexpr char kMark = '\x1F';

std::multimap<HelpPlace, CommandRegistration::Declare>& registrations()
{
    static std::multimap<HelpPlace, CommandRegistration::Declare> all;
    return all;
}

bool needsMark(const std::string& argument)
{
    return argument.starts_with(kMark) || (argument.starts_with('[') && argument.ends_with(']'));
}

CLI::Option* finish(CLI::Option* option, const std::string& valueName, const ValueText& valueText)
{
    textOf(*option) = valueText;
    return option->type_name(valueName)->transform(CLI::Validator(
        [](std::string& argument) {
            argument = removeMark(argument);
            return std::string();
        },
        ""));
}

struct SplitName {
    std::string option;
    std::string value;
};

SplitName splitName(const std::string& name, const ValueText& valueText)
{
    const std::size_t space = name.find(' ');
    SplitName split{name.substr(0, space), space == std::string::npos ? "" : name.substr(space + 1)};
    for (const std::string& oldName : valueText.oldNames)
        split.option += "," + oldName;
    return split;
}

} // namespace

CommandRegistration::CommandRegistration(HelpPlace place, Declare declare)
{
    registrations().emplace(place, declare);
}

std::vector<Command> declareCommands(CLI::App& program)
{
    std::vector<Command> commands;
    for (const auto& [place, declare] : registrations())
        std::ranges::move(declare(program), std::back_inserter(commands));
    return commands;
}

CLI::App* addCommand(CLI::App& parent, const CommandText& text)
{
    CLI::App* command = parent.add_subcommand(text.name, text.description);
    textOf(*command) = text;
    command->fallthrough();
    return command;
}

CLI::Option* addArgument(CLI::App& command, const std::string& name, std::string& value, const std::string& description,
                         const ValueText& valueText)
{
    const SplitName split = splitName(name, valueText);
    return finish(command.add_option(split.option, value, description), split.value, valueText);
}

CLI::Option* addArguments(CLI::App& command, const std::string& name, std::vector<std::string>& values,
                          const std::string& description, const ValueText& valueText)
{
    const SplitName split = splitName(name, valueText);
    return finish(command.add_option(split.option, values, description), split.value, valueText);
}

std::vector<std::string> markArguments(const std::vector<std::string>& arguments)
{
    std::vector<std::string> kept;
    kept.reserve(arguments.size());
    const auto separator = std::ranges::find(arguments, "--");
    for (auto argument = arguments.begin(); argument != separator; ++argument)
        kept.push_back(needsMark(*argument) ? kMark + *argument : *argument);
    if (separator == arguments.end())
        return kept;
    kept.emplace_back(kSeparatorFlag); // ends the values of an option with many
    for (auto argument = separator + 1; argument != arguments.end(); ++argument)
        kept.push_back(kMark + *argument);
    return kept;
}

std::string removeMark(const std::string& argument)
{
    return argument.starts_with(kMark) ? argument.substr(1) : argument;
}

int integerArgument(const std::string& option, const std::string& text, int least, int most)
{
    const std::optional<int> number = Embedded::parseInteger<int>(text);
    if (!number || *number < least || *number > most)
        throw wrongUsage(option, fmt::format("expected a whole number from {} to {}, found {}", least, most, text));
    return *number;
}

std::wstring wideArgument(const std::string& argument, const std::string& text)
{
    if (text.empty())
        throw wrongUsage(argument, "is empty");
    if (!Embedded::isValidUtf8(text))
        throw wrongUsage(argument, "is not UTF-8");
    return Embedded::wideFromUtf8(text);
}

} // namespace Orvelcs
