#include "orvelcs/output/markdown_page.h"

#include <algorithm>

#include <fmt/format.h>

#include "orvelcs/cli/help_topics.h"
#include "orvelcs/cli/text_blocks.h"

namespace Orvelcs {
namespace {

constexpr std::size_t kWidth = 120;

/// The text with nothing in it that Markdown reads as a sign.
std::string markdown(const std::string& text)
{
    std::string escaped;
    for (const char character : text) {
        if (std::string_view("\\`*_<>|[]").find(character) != std::string_view::npos)
            escaped += '\\';
        escaped += character;
    }
    return escaped;
}

std::string markdownCode(const std::string& text)
{
    return "`" + text + "`";
}

std::string markdownItem(const std::string& term, const std::string& meaning)
{
    constexpr std::size_t kIndent = 2; // of "- "
    return "- " + wrapText(markdownCode(term) + ": " + markdown(meaning), kWidth, kIndent, kIndent) + "\n";
}

std::string fenced(const std::string& lines)
{
    return "```\n" + lines + "```\n";
}

std::string markdownBlocks(const std::string& source)
{
    std::string text;
    bool isList = false;
    for (const TextBlock& block : parseTextBlocks(source)) {
        const bool isItem = block.kind == TextBlock::Kind::item;
        text += isList && isItem ? "" : "\n";
        if (isItem)
            text += markdownItem(block.term, block.text);
        else
            text += block.kind == TextBlock::Kind::literal ? fenced(block.text + "\n")
                                                           : wrapText(markdown(block.text), kWidth, 0, 0) + "\n";
        isList = isItem;
    }
    return text;
}

std::string markdownOptions(const std::vector<OptionEntry>& options)
{
    std::string text = options.empty() ? "" : "\n";
    for (const OptionEntry& option : options)
        text += markdownItem(option.label(), fullDescription(option));
    return text;
}

std::string markdownUsage(const CommandEntry& command)
{
    std::string lines;
    for (const std::string& usage : command.usage)
        lines += usage + "\n";
    return "\n" + fenced(lines);
}

std::string markdownExitStatuses(const CommandEntry& command)
{
    std::string text;
    for (const ExitMeaning& meaning : command.exitStatuses)
        if (meaning.status == ExitStatus::nothingFound || meaning.status == ExitStatus::interrupted)
            text += fmt::format("\nThe exit status is {} if {}.\n", static_cast<int>(meaning.status),
                                markdown(meaning.meaning));
    return text;
}

std::string markdownExamples(const CommandEntry& command)
{
    std::string text;
    for (const CommandExample& example : command.examples)
        text += "\n" + markdown(example.purpose) + ":\n\n" + fenced("$ " + example.command + "\n");
    return text;
}

std::string markdownCommand(const CommandEntry& command)
{
    return "\n### " + command.name + "\n\n" + wrapText(markdown(command.description + "."), kWidth, 0, 0) + "\n" +
           markdownUsage(command) + markdownBlocks(command.details) + markdownOptions(command.arguments) +
           markdownOptions(command.options) + markdownExitStatuses(command) + markdownExamples(command);
}

} // namespace

std::string markdownPage(const CommandTable& table)
{
    std::string page =
        "# The command line\n\nThis page is made by `orvelcs commands --markdown`, from the same table as "
        "`orvelcs help`.\n" +
        markdownUsage(table.program) + "\n## Options\n" + markdownOptions(table.globalOptions) + "\n## Commands\n";
    for (const CommandEntry& command : table.commands)
        page += markdownCommand(command);
    for (const HelpTopic& topic : helpTopics())
        page += "\n## " + topic.title + "\n" + markdownBlocks(topic.text);
    return page;
}

} // namespace Orvelcs
