#include "orvelcs/cli/text_blocks.h"

#include <algorithm>
#include <sstream>

#include "orvelcs/cli/display_width.h"

namespace Orvelcs {
namespace {

constexpr std::size_t kIndent = 2;
constexpr std::size_t kTermGap = 2; // between a term and its meaning

TextBlock parseIndentedLine(const std::string& line)
{
    const std::string text = line.substr(kIndent);
    const std::size_t gap = text.find("  ");
    const std::size_t meaning = text.find_first_not_of(' ', gap == std::string::npos ? text.size() : gap);
    if (meaning == std::string::npos || gap == 0)
        return {TextBlock::Kind::literal, "", text};
    return {TextBlock::Kind::item, text.substr(0, gap), text.substr(meaning)};
}

} // namespace

std::vector<TextBlock> parseTextBlocks(const std::string& text)
{
    std::vector<TextBlock> blocks;
    std::istringstream lines(text);
    bool continues = false; // whether the next line belongs to the last paragraph
    for (std::string line; std::getline(lines, line);) {
        if (line.empty()) {
            continues = false;
        } else if (line.starts_with("  ")) {
            blocks.push_back(parseIndentedLine(line));
            continues = false;
        } else if (continues) {
            blocks.back().text += " " + line;
        } else {
            blocks.push_back({TextBlock::Kind::paragraph, "", line});
            continues = true;
        }
    }
    return blocks;
}

std::string wrapText(const std::string& text, std::size_t width, std::size_t indent, std::size_t column)
{
    std::string result;
    std::istringstream words(text);
    bool startsLine = true;
    for (std::string word; words >> word;) {
        const std::size_t length = displayWidth(word);
        if (!startsLine && column + 1 + length > width) {
            result += "\n" + std::string(indent, ' ');
            column = indent;
        } else if (!startsLine) {
            result += " ";
            ++column;
        }
        result += word;
        column += length;
        startsLine = false;
    }
    return result;
}

std::string layOutTerm(const std::string& term, const std::string& meaning, std::size_t width, std::size_t termColumns)
{
    const std::size_t taken = kIndent + displayWidth(term);
    const std::size_t start = kIndent + termColumns + kTermGap;
    std::string line = std::string(kIndent, ' ') + term;
    if (taken + kTermGap > start)
        line += "\n" + std::string(start, ' ');
    else
        line += std::string(start - taken, ' ');
    return line + wrapText(meaning, width, start, start) + "\n";
}

std::string layOutBlocks(const std::vector<TextBlock>& blocks, std::size_t width)
{
    std::size_t termColumns = 0;
    for (const TextBlock& block : blocks)
        termColumns = std::max(termColumns, displayWidth(block.term));
    termColumns = std::min(termColumns, width / 3);
    std::string text;
    for (const TextBlock& block : blocks) {
        if (block.kind == TextBlock::Kind::paragraph)
            text += (text.empty() ? "" : "\n") + wrapText(block.text, width, 0, 0) + "\n";
        else if (block.kind == TextBlock::Kind::item)
            text += layOutTerm(block.term, block.text, width, termColumns);
        else
            text += std::string(kIndent, ' ') + block.text + "\n";
    }
    return text;
}

} // namespace Orvelcs
