#include "orvelcs/cli/help_text.h"

#include <algorithm>

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "orvelcs/cli/command_table.h"
#include "orvelcs/cli/display_width.h"
#include "orvelcs/cli/text_blocks.h"

namespace Orvelcs {
namespace {

constexpr std::size_t kMostTermColumns = 26;

std::string usageText(const CommandEntry& command, std::size_t width)
{
    constexpr std::size_t kIndent = 7; // of "Usage: "
    std::string text;
    for (const std::string& usage : command.usage)
        text += (text.empty() ? "\nUsage: " : std::string(kIndent, ' ')) +
                wrapText(usage, width, kIndent + 4, kIndent) + "\n";
    return text;
}

struct HelpLine {
    std::string term;
    std::string meaning;
};

std::string section(const std::string& title, const std::vector<HelpLine>& lines, std::size_t width)
{
    if (lines.empty())
        return "";
    std::size_t columns = 0;
    for (const HelpLine& line : lines)
        columns = std::max(columns, displayWidth(line.term));
    columns = std::min({columns, kMostTermColumns, width / 3});
    std::string text = "\n" + title + ":\n";
    for (const HelpLine& line : lines)
        text += layOutTerm(line.term, line.meaning, width, columns);
    return text;
}

std::string optionsSection(const std::string& title, const std::vector<OptionEntry>& options, std::size_t width)
{
    std::vector<HelpLine> lines;
    for (const OptionEntry& option : options)
        lines.push_back({option.label(), fullDescription(option)});
    return section(title, lines, width);
}

std::string commandsSection(const CLI::App& command, std::size_t width)
{
    std::vector<HelpLine> lines;
    for (const CLI::App* subcommand : command.get_subcommands([](const CLI::App*) { return true; }))
        lines.push_back({subcommand->get_name(), subcommand->get_description()});
    return section("Commands", lines, width);
}

std::string exitStatusText(const CommandEntry& command, std::size_t width)
{
    std::vector<std::string> meanings;
    for (const ExitMeaning& meaning : command.exitStatuses)
        if (meaning.status != ExitStatus::readerGone)
            meanings.push_back(fmt::format("{} {}", static_cast<int>(meaning.status), meaning.meaning));
    return "\n" + wrapText(fmt::format("Exit status: {}.", fmt::join(meanings, ", ")), width, 0, 0) + "\n";
}

std::string examplesSection(const CommandEntry& command, std::size_t width)
{
    std::string text;
    for (const CommandExample& example : command.examples)
        text += "  " + wrapText(example.purpose + ":", width, 2, 2) + "\n      " + example.command + "\n";
    return text.empty() ? text : "\nExamples:\n" + text;
}

/// The names of the options of every command.
std::string globalOptionsText(const CLI::App& command, std::size_t width)
{
    const CLI::App* program = &command;
    while (program->get_parent() != nullptr)
        program = program->get_parent();
    std::vector<std::string> labels;
    for (const OptionEntry& option : describeGlobalOptions(*program))
        labels.push_back(
            fmt::format("{}{}{}", fmt::join(option.names, "/"), option.value.empty() ? "" : " ", option.value));
    return "\n" +
           wrapText(fmt::format("Options of every command, before or after it: {}", fmt::join(labels, ", ")), width, 0,
                    0) +
           "\n";
}

} // namespace

std::string helpText(const CLI::App& command, std::size_t width)
{
    const CommandEntry entry = describeCommand(command);
    const bool isProgram = command.get_parent() == nullptr;
    const std::string details = layOutBlocks(parseTextBlocks(entry.details), width);
    return wrapText(entry.description, width, 0, 0) + "\n" + usageText(entry, width) + commandsSection(command, width) +
           optionsSection("Arguments", entry.arguments, width) +
           optionsSection("Options", isProgram ? describeGlobalOptions(command) : entry.options, width) +
           (details.empty() ? "" : "\n" + details) + examplesSection(entry, width) + exitStatusText(entry, width) +
           (isProgram ? "" : globalOptionsText(command, width));
}

} // namespace Orvelcs
