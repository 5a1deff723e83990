#include "orvelcs/output/manual_page.h"

#include <cstdint>
#include <sstream>
#include <string_view>

#include <fmt/format.h>
#include <utf8.h>

#include "orvelcs/cli/help_topics.h"
#include "orvelcs/cli/text_blocks.h"

namespace Orvelcs {
namespace {

constexpr std::string_view kParagraph = ".PP\n";

std::string roffCharacter(char32_t character)
{
    switch (character) {
    case '\\':
        return "\\e";
    case '-':
        return "\\-";
    case '~':
        return "\\(ti";
    case '^':
        return "\\(ha";
    case '\'':
        return "\\(aq";
    default:
        return character < 0x80 ? std::string(1, static_cast<char>(character))
                                : fmt::format("\\[u{:04X}]", static_cast<std::uint32_t>(character));
    }
}

/// The text as man reads it: no character of it is a request or an escape.
std::string roff(const std::string& text)
{
    std::string escaped = text.starts_with('.') ? "\\&" : "";
    for (auto place = text.begin(); place != text.end();)
        escaped += roffCharacter(utf8::next(place, text.end()));
    return escaped;
}

/// The same in quotes, as one argument of a request.
std::string quotedRoff(const std::string& text)
{
    std::string quoted;
    for (const char character : roff(text))
        quoted += character == '"' ? "\\(dq" : std::string(1, character);
    return '"' + quoted + '"';
}

std::string roffLines(const std::string& sentence)
{
    constexpr std::size_t kWidth = 76;
    std::istringstream lines(wrapText(sentence, kWidth, 0, 0));
    std::string text;
    for (std::string line; std::getline(lines, line);)
        text += roff(line) + "\n";
    return text;
}

/// Each sentence begins on a line of its own, so that a change of the page is read by sentences.
std::string sentences(const std::string& text)
{
    std::string lines;
    std::size_t start = 0;
    for (std::size_t end = text.find(". "); end != std::string::npos; end = text.find(". ", start)) {
        lines += roffLines(text.substr(start, end + 1 - start));
        start = end + 2;
    }
    return lines + roffLines(text.substr(start));
}

std::string roffItem(const std::string& term, const std::string& meaning)
{
    return ".TP\n.B " + quotedRoff(term) + "\n" + sentences(meaning);
}

std::string roffLiteral(const std::string& text)
{
    return ".RS 4\n.EX\n" + roff(text) + "\n.EE\n.RE\n";
}

std::string roffBlocks(const std::string& source)
{
    std::string text;
    for (const TextBlock& block : parseTextBlocks(source)) {
        if (block.kind == TextBlock::Kind::paragraph)
            text += std::string(kParagraph) + sentences(block.text);
        else
            text += block.kind == TextBlock::Kind::item ? roffItem(block.term, block.text) : roffLiteral(block.text);
    }
    return text;
}

std::string roffOptions(const std::vector<OptionEntry>& options)
{
    std::string text;
    for (const OptionEntry& option : options)
        text += roffItem(option.label(), fullDescription(option));
    return text;
}

std::string roffUsage(const CommandEntry& command)
{
    std::string text;
    for (const std::string& usage : command.usage)
        text += roffLiteral(usage);
    return text;
}

std::string roffExamples(const CommandEntry& command)
{
    std::string text;
    for (const CommandExample& example : command.examples)
        text += std::string(kParagraph) + sentences(example.purpose + ":") + roffLiteral("$ " + example.command);
    return text;
}

/// The statuses that only some commands have.
std::string roffExitStatuses(const CommandEntry& command)
{
    std::string text;
    for (const ExitMeaning& meaning : command.exitStatuses)
        if (meaning.status == ExitStatus::nothingFound)
            text += fmt::format(".PP\nThe exit status is {} if {}.\n", static_cast<int>(meaning.status),
                                roff(meaning.meaning));
    return text;
}

std::string roffCommand(const CommandEntry& command)
{
    return ".SS " + quotedRoff(command.name) + "\n" + sentences(command.description + ".") + roffUsage(command) +
           roffBlocks(command.details) + roffExitStatuses(command) + roffOptions(command.arguments) +
           roffOptions(command.options) + roffExamples(command);
}

} // namespace

std::string manualPage(const CommandTable& table)
{
    std::string page = ".\\\" Made by \"orvelcs commands --man\".\n.TH ORVELCS 1\n.SH NAME\norvelcs \\- the coordinate "
                       "reference systems of drawings\n.SH SYNOPSIS\n" +
                       roffUsage(table.program) + ".SH OPTIONS\n" + roffOptions(table.globalOptions) + ".SH COMMANDS\n";
    for (const CommandEntry& command : table.commands)
        page += roffCommand(command);
    for (const HelpTopic& topic : helpTopics()) {
        const std::string text = roffBlocks(topic.text);
        const std::size_t start = text.starts_with(kParagraph) ? kParagraph.size() : 0; // a heading begins one itself
        page += ".SH " + quotedRoff(topic.title) + "\n" + text.substr(start);
    }
    return page;
}

} // namespace Orvelcs
