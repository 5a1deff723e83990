#include "project/command_blocks.h"

#include <filesystem>
#include <regex>
#include <span>

namespace Tests {
namespace {

constexpr std::string_view kEllipsis = "…";
constexpr std::string_view kFence = "```";

/// The text of a line "<!-- text -->"; empty for any other line.
std::string parseComment(const std::string& line)
{
    static const std::regex comment("<!-- (.*) -->");
    std::smatch match;
    return std::regex_match(line, match, comment) ? match[1].str() : "";
}

bool looksLikeCommand(const std::string& line)
{
    static const std::regex command(R"( *(\$ |(make|cmake|ctest|orvelcs|sqlite3|build/|scripts/|apt-get)\b).*)");
    return std::regex_match(line, command);
}

bool isCommandLanguage(std::string_view language)
{
    return language == "sh" || language == "console";
}

/// Follows the fences of a page, line by line.
class PageLines {
public:
    explicit PageLines(const SourceFile& page) : path_(page.path), lines_(splitLines(page.text)) {}

    bool next()
    {
        if (index_ == lines_.size())
            return false;
        const std::string& line = lines_[index_++];
        isFence_ = line.starts_with(kFence);
        if (isFence_ && !isInside_)
            language_ = line.substr(kFence.size());
        if (isFence_)
            isInside_ = !isInside_;
        return true;
    }
    const std::string& line() const { return lines_[index_ - 1]; }
    bool opens() const { return isFence_ && isInside_; }
    bool closes() const { return isFence_ && !isInside_; }
    bool isInside() const { return isInside_ && !isFence_; }
    const std::string& language() const { return language_; }
    std::string place() const { return path_ + ":" + std::to_string(index_); }
    bool followsBlank() const { return index_ > 1 && lines_[index_ - 2].empty(); }

private:
    std::string path_;
    std::vector<std::string> lines_;
    std::size_t index_ = 0;
    bool isInside_ = false;
    bool isFence_ = false;
    std::string language_;
};

bool matchesLine(std::string_view expected, std::string_view line)
{
    if (!expected.ends_with(kEllipsis))
        return expected == line;
    expected.remove_suffix(kEllipsis.size());
    return line.starts_with(expected);
}

bool matchesLines(std::span<const std::string> expected, std::span<const std::string> lines)
{
    if (expected.empty())
        return lines.empty();
    if (expected[0] != kEllipsis)
        return !lines.empty() && matchesLine(expected[0], lines[0]) &&
               matchesLines(expected.subspan(1), lines.subspan(1));
    for (std::size_t left = 0; left <= lines.size(); ++left)
        if (matchesLines(expected.subspan(1), lines.subspan(left)))
            return true;
    return false;
}

} // namespace

std::string CommandBlock::remark(std::string_view prefix) const
{
    return comment.starts_with(prefix) ? comment.substr(prefix.size()) : "";
}

std::vector<SourceFile> readPagesWithCommands()
{
    std::vector<SourceFile> pages = readFiles(ORVEL_SOURCE_DIR, {"docs"}, {".md"});
    std::erase_if(pages, [](const SourceFile& page) { return page.path == "docs/cli.md"; });
    for (const char* page : {"README.md", "CONTRIBUTING.md"})
        pages.push_back(readFile(ORVEL_SOURCE_DIR, page));
    return pages;
}

std::vector<CommandBlock> findCommandBlocks(const SourceFile& page)
{
    std::vector<CommandBlock> blocks;
    std::string heading;
    std::string comment;
    PageLines lines(page);
    while (lines.next()) {
        const bool isCommand = isCommandLanguage(lines.language());
        if (lines.opens() && isCommand) {
            blocks.push_back({lines.place(), heading, lines.language() == "console", "", comment});
        } else if (lines.isInside()) {
            if (isCommand)
                blocks.back().text += lines.line() + "\n";
        } else if (!lines.line().empty()) {
            comment = parseComment(lines.line());
            if (lines.line().starts_with("#"))
                heading = lines.line().substr(lines.line().find_first_not_of("# "));
        }
    }
    return blocks;
}

std::vector<std::string> commandsBelow(const std::string& page, const std::string& heading)
{
    std::vector<std::string> texts;
    for (CommandBlock& block : findCommandBlocks(readFile(std::filesystem::path(ORVEL_SOURCE_DIR), page)))
        if (block.heading == heading)
            texts.push_back(std::move(block.text));
    return texts;
}

std::vector<std::string> findHiddenCommands(const SourceFile& page)
{
    std::vector<std::string> complaints;
    bool isIndented = false;
    PageLines lines(page);
    while (lines.next()) {
        const bool isCode = lines.isInside() && !isCommandLanguage(lines.language());
        isIndented = lines.line().starts_with("    ") && (isIndented || lines.followsBlank());
        if ((isCode || (!lines.isInside() && isIndented)) && looksLikeCommand(lines.line()))
            complaints.push_back(lines.place() + ": expected commands in a block ```sh or ```console, found \"" +
                                 lines.line() + "\"");
    }
    return complaints;
}

std::vector<ConsoleCommand> splitConsole(const std::string& text)
{
    std::vector<ConsoleCommand> commands;
    bool isContinued = false;
    for (const std::string& line : splitLines(text)) {
        if (isContinued)
            commands.back().command += "\n" + line;
        else if (line.starts_with("$ "))
            commands.push_back({line.substr(2), ""});
        else if (!commands.empty())
            commands.back().output += line + "\n";
        isContinued = (isContinued || line.starts_with("$ ")) && line.ends_with("\\");
    }
    return commands;
}

bool matchesOutput(const std::string& expected, const std::string& output)
{
    const std::vector<std::string> expectedLines = splitLines(expected);
    const std::vector<std::string> lines = splitLines(output);
    return matchesLines(expectedLines, lines);
}

} // namespace Tests
