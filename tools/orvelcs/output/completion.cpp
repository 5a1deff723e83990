#include "orvelcs/output/completion.h"

#include <algorithm>

namespace Orvelcs {

bool takesFiles(const OptionEntry& entry)
{
    return entry.type == ValueType::file || entry.type == ValueType::system;
}

std::vector<OptionEntry> allOptions(const CommandEntry& command, const CommandTable& table)
{
    std::vector<OptionEntry> options = command.options;
    options.insert(options.end(), table.globalOptions.begin(), table.globalOptions.end());
    return options;
}

std::vector<std::string> optionsWithValues(const CommandTable& table)
{
    std::vector<std::string> names;
    const auto add = [&](const std::vector<OptionEntry>& options) {
        for (const OptionEntry& option : options)
            for (const std::string& name : option.names)
                if (option.type != ValueType::flag && std::ranges::find(names, name) == names.end())
                    names.push_back(name);
    };
    add(table.globalOptions);
    for (const CommandEntry& command : table.commands)
        add(command.options);
    return names;
}

std::vector<Choice> choicesFor(const OptionEntry& entry, const CommandTable& table)
{
    if (entry.type != ValueType::command)
        return entry.choices;
    std::vector<Choice> choices;
    for (const CommandEntry& command : table.commands)
        if (command.name.find(' ') == std::string::npos)
            choices.emplace_back(command.name.c_str(), command.description.c_str());
    return choices;
}

std::string singleQuoted(const std::string& text, std::string_view escapedQuote)
{
    std::string quoted = "'";
    for (const char character : text)
        character == '\'' ? quoted.append(escapedQuote) : quoted.append(1, character);
    return quoted + "'";
}

} // namespace Orvelcs
