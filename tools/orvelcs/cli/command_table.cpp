#include "orvelcs/cli/command_table.h"

#include <algorithm>
#include <map>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace Orvelcs {
namespace {

/// The words for values. Any other word is that of a text.
ValueType typeOfValue(const std::string& word)
{
    static const std::map<std::string, ValueType> types = {
        {"FILE", ValueType::file},      {"OUT", ValueType::file},    {"TEXTFILE", ValueType::file},
        {"LIST", ValueType::file},      {"POINTS", ValueType::file}, {"DIR", ValueType::folder},
        {"N", ValueType::integer},      {"YEAR", ValueType::number}, {"SECONDS", ValueType::number},
        {"SYSTEM", ValueType::system},  {"SRC", ValueType::system},  {"DST", ValueType::system},
        {"COMMAND", ValueType::command}};
    const std::string name = word.substr(0, word.find_first_of(".="));
    const auto found = types.find(name);
    return found != types.end() ? found->second : ValueType::text;
}

const char* typeName(ValueType type)
{
    switch (type) {
    case ValueType::flag:
        return "flag";
    case ValueType::integer:
        return "integer";
    case ValueType::number:
        return "number";
    case ValueType::file:
        return "file";
    case ValueType::folder:
        return "folder";
    case ValueType::system:
        return "system";
    case ValueType::command:
        return "command";
    case ValueType::text:
        break;
    }
    return "text";
}

/// The names of an option that are shown, the short ones first.
std::vector<std::string> shownNames(const CLI::Option& option)
{
    const std::vector<std::string>& oldNames = textOf(option).oldNames;
    std::vector<std::string> names;
    const auto add = [&](const std::string& name) {
        if (std::ranges::find(oldNames, name) == oldNames.end())
            names.push_back(name);
    };
    for (const std::string& name : option.get_snames())
        add("-" + name);
    for (const std::string& name : option.get_lnames())
        add("--" + name);
    return names;
}

bool isShown(const CLI::Option& option)
{
    return !option.get_group().empty() && (option.get_positional() || !shownNames(option).empty());
}

OptionEntry describeOption(const CLI::Option& option)
{
    OptionEntry entry;
    const ValueText& text = textOf(option);
    const bool isFlag = option.get_items_expected_max() == 0;
    entry.names = option.get_positional() ? std::vector<std::string>{option.get_name(true)} : shownNames(option);
    entry.value = isFlag || option.get_positional() ? "" : option.get_type_name();
    entry.type = isFlag ? ValueType::flag : typeOfValue(option.get_positional() ? entry.names.front() : entry.value);
    entry.description = option.get_description();
    entry.choices = text.choices;
    entry.defaultValue = text.defaultValue;
    entry.isRequired = option.get_required();
    entry.isRepeated = option.get_items_expected_max() > 1;
    return entry;
}

std::string fullName(const CLI::App& command)
{
    std::string name;
    for (const CLI::App* app = &command; app->get_parent() != nullptr; app = app->get_parent())
        name = name.empty() ? app->get_name() : app->get_name() + " " + name;
    return name;
}

std::vector<const CLI::App*> subcommandsOf(const CLI::App& command)
{
    return command.get_subcommands([](const CLI::App*) { return true; });
}

/// The statuses of every command, and those of its own.
std::vector<ExitMeaning> exitStatusesOf(const CommandText& text)
{
    std::vector<ExitMeaning> all = {{ExitStatus::done, "done"},
                                    {ExitStatus::failed, "failed or refused"},
                                    {ExitStatus::wrongUsage, "wrong usage"},
                                    {ExitStatus::readerGone, "nobody read standard output to its end; 1 on Windows"}};
    all.insert(all.end(), text.exitStatuses.begin(), text.exitStatuses.end());
    std::ranges::stable_sort(all, {}, [](const ExitMeaning& meaning) { return static_cast<int>(meaning.status); });
    return all;
}

void addCommands(std::vector<CommandEntry>& commands, const CLI::App& parent)
{
    for (const CLI::App* command : subcommandsOf(parent)) {
        commands.push_back(describeCommand(*command));
        addCommands(commands, *command);
    }
}

Json valueOrNull(const std::string& text)
{
    return text.empty() ? Json(nullptr) : Json(text);
}

Json asJson(const OptionEntry& entry, bool isArgument)
{
    Json json = isArgument ? Json({{"name", entry.names.front()}})
                           : Json({{"names", entry.names}, {"value", valueOrNull(entry.value)}});
    json["type"] = typeName(entry.type);
    json["description"] = entry.description;
    json["required"] = entry.isRequired;
    json["repeated"] = entry.isRepeated;
    json["default"] = valueOrNull(entry.defaultValue);
    json["choices"] = entry.choices.empty() ? Json(nullptr) : Json::array();
    for (const Choice& choice : entry.choices)
        json["choices"].push_back(choice.value);
    if (!isArgument)
        json["global"] = entry.isGlobal;
    return json;
}

Json asJson(const std::vector<OptionEntry>& entries, bool areArguments)
{
    Json array = Json::array();
    for (const OptionEntry& entry : entries)
        array.push_back(asJson(entry, areArguments));
    return array;
}

Json asJson(const CommandEntry& command, const std::vector<OptionEntry>& globalOptions)
{
    std::vector<OptionEntry> options = command.options;
    options.insert(options.end(), globalOptions.begin(), globalOptions.end());
    Json statuses = Json::array();
    for (const ExitMeaning& meaning : command.exitStatuses)
        statuses.push_back({{"status", meaning.status}, {"meaning", meaning.meaning}});
    Json examples = Json::array();
    for (const CommandExample& example : command.examples)
        examples.push_back({{"purpose", example.purpose}, {"command", example.command}, {"status", example.status}});
    return {{"name", command.name},
            {"usage", command.usage},
            {"description", command.description},
            {"details", command.details},
            {"arguments", asJson(command.arguments, true)},
            {"options", asJson(options, false)},
            {"subcommands", command.subcommands},
            {"exitStatuses", std::move(statuses)},
            {"examples", std::move(examples)}};
}

} // namespace

std::string OptionEntry::label() const
{
    const std::string joined = fmt::format("{}", fmt::join(names, ", "));
    if (value.empty())
        return isRepeated ? joined + "..." : joined;
    return joined + " " + value;
}

CommandEntry describeCommand(const CLI::App& command)
{
    const CommandText& text = textOf(command);
    CommandEntry entry;
    entry.name = fullName(command);
    entry.description = command.get_description();
    for (const std::string& usage : text.usage)
        entry.usage.push_back("orvelcs " + usage);
    entry.details = text.details;
    for (const CLI::Option* option : command.get_options())
        if (isShown(*option) && option != command.get_help_ptr())
            (option->get_positional() ? entry.arguments : entry.options).push_back(describeOption(*option));
    for (const CLI::App* subcommand : subcommandsOf(command))
        entry.subcommands.push_back(subcommand->get_name());
    entry.exitStatuses = exitStatusesOf(text);
    entry.examples = text.examples;
    return entry;
}

std::vector<OptionEntry> describeGlobalOptions(const CLI::App& program)
{
    std::vector<OptionEntry> options;
    for (const CLI::Option* option : program.get_options())
        if (isShown(*option)) {
            options.push_back(describeOption(*option));
            options.back().isGlobal = true;
        }
    return options;
}

CommandTable describeProgram(const CLI::App& program)
{
    CommandTable table{describeCommand(program), describeGlobalOptions(program), {}};
    table.program.options.clear();
    addCommands(table.commands, program);
    return table;
}

Json asJson(const CommandTable& table)
{
    Json array = Json::array();
    for (const CommandEntry& command : table.commands)
        array.push_back(asJson(command, table.globalOptions));
    return array;
}

std::string fullDescription(const OptionEntry& option)
{
    std::string text = option.description;
    const char* separator = ": ";
    for (const Choice& choice : option.choices) {
        text += separator + choice.value + (choice.meaning.empty() ? "" : " (" + choice.meaning + ")");
        separator = ", ";
    }
    if (!option.defaultValue.empty())
        text += fmt::format(" (default: {})", option.defaultValue);
    return text;
}

} // namespace Orvelcs
