#include "orvelcs/cli/option_values.h"

#include <algorithm>
#include <cstddef>

namespace Orvelcs {
namespace {

constexpr const char* kSeparator = "--";

const CLI::App* findSubcommand(const CLI::App& command, const std::string& name)
{
    const auto found =
        command.get_subcommands([&](const CLI::App* candidate) { return candidate->get_name() == name; });
    return found.empty() ? nullptr : found.front();
}

// An option of the command, or of one that it is a part of.
const CLI::Option* lookUpOption(const CLI::App* command, const std::string& name)
{
    const CLI::Option* option = nullptr;
    for (; command != nullptr && option == nullptr; command = command->get_parent())
        option = command->get_option_no_throw(name);
    return option;
}

bool isFlag(const CLI::Option& option)
{
    return option.get_items_expected_max() == 0;
}

/// What is wrong with the option's value; null when it is right. `next` is null at the end.
const char* describeMisuse(const CLI::Option& option, const std::string& word, const std::string* next)
{
    const std::size_t equals = word.find('=');
    if (isFlag(option))
        return equals == std::string::npos ? nullptr : "takes no value";
    if (equals != std::string::npos)
        return equals + 1 == word.size() ? "needs a value" : nullptr;
    if (next == nullptr || *next == kSeparator)
        return "needs a value";
    return next->empty() ? "is empty" : nullptr;
}

} // namespace

bool looksLikeOption(const std::string& word)
{
    return word.size() > 1 && word.front() == '-';
}

bool holdsOption(const std::vector<std::string>& words, const std::string& option)
{
    const auto end = std::ranges::find(words, kSeparator);
    return std::find(words.begin(), end, option) != end;
}

std::optional<MisusedOption> misusedOption(const CLI::App& program, const std::vector<std::string>& words)
{
    const CLI::App* command = &program;
    for (std::size_t index = 0; index < words.size() && words[index] != kSeparator; ++index) {
        const std::string& word = words[index];
        const std::string* next = index + 1 < words.size() ? &words[index + 1] : nullptr;
        if (!looksLikeOption(word)) {
            if (const CLI::App* subcommand = findSubcommand(*command, word))
                command = subcommand;
            continue;
        }
        const std::string name = word.substr(0, word.find('='));
        const CLI::Option* option = lookUpOption(command, name);
        if (option == nullptr)
            continue;
        if (const char* message = describeMisuse(*option, word, next))
            return MisusedOption{command, name, message};
        if (!isFlag(*option) && word == name && next != nullptr && !looksLikeOption(*next))
            ++index;
    }
    return std::nullopt;
}

} // namespace Orvelcs
