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

constexpr std::size_t kHelpColumn = 30;
constexpr const char* kEverywhere =
    "Options of every command, before or after it: --json, -q/--quiet, --no-color, --user-dir DIR,\n"
    "--registry FILE, --wait SECONDS, --help";
constexpr char kMark = '\x1F';

std::multimap<HelpPlace, CommandRegistration::Declare>& registrations()
{
    static std::multimap<HelpPlace, CommandRegistration::Declare> all;
    return all;
}

class HelpText : public CLI::Formatter {
public:
    explicit HelpText(std::vector<std::string> usage) : usage_(std::move(usage)) { column_width(kHelpColumn); }

    std::string make_usage(const CLI::App*, std::string) const override
    {
        std::string text = "\n";
        for (const std::string& form : usage_)
            text += fmt::format("{} orvelcs {}\n", text.size() == 1 ? "Usage:" : "      ", form);
        return text;
    }

    std::string make_option_opts(const CLI::Option* option) const override
    {
        return option->get_type_name().empty() ? std::string() : " " + option->get_type_name();
    }

private:
    std::vector<std::string> usage_;
};

bool needsMark(const std::string& argument)
{
    return argument.starts_with(kMark) || (argument.starts_with('[') && argument.ends_with(']'));
}

CLI::Option* finish(CLI::Option* option, const std::string& valueName)
{
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

SplitName splitName(const std::string& name)
{
    const std::size_t space = name.find(' ');
    return space == std::string::npos ? SplitName{name, ""} : SplitName{name.substr(0, space), name.substr(space + 1)};
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

void setUsage(CLI::App& app, const std::vector<std::string>& usage)
{
    app.formatter(std::make_shared<HelpText>(usage));
}

CLI::App* addCommand(CLI::App& parent, const CommandText& text)
{
    CLI::App* command = parent.add_subcommand(text.name, text.description);
    setUsage(*command, text.usage);
    command->group("Commands");
    command->footer(text.details + (text.details.empty() ? "" : "\n") + kEverywhere);
    command->fallthrough();
    return command;
}

CLI::Option* addArgument(CLI::App& command, const std::string& name, std::string& value, const std::string& description)
{
    const SplitName split = splitName(name);
    return finish(command.add_option(split.option, value, description), split.value);
}

CLI::Option* addArguments(CLI::App& command, const std::string& name, std::vector<std::string>& values,
                          const std::string& description)
{
    const SplitName split = splitName(name);
    return finish(command.add_option(split.option, values, description), split.value);
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
