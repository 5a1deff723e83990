#include "orvelcs/cli/columns.h"

#include <algorithm>

#include <fmt/format.h>

#include "embedded/base/trim.h"
#include "orvelcs/cli/failure.h"

namespace Orvelcs {
namespace {

constexpr char kQuote = '"';
constexpr const char* kColumnBlanks = " \t";

void splitAtBlanks(std::string_view line, std::vector<std::string_view>& columns)
{
    for (std::size_t begin = line.find_first_not_of(kColumnBlanks); begin != line.npos;) {
        const std::size_t end = std::min(line.find_first_of(kColumnBlanks, begin), line.size());
        columns.push_back(line.substr(begin, end - begin));
        begin = line.find_first_not_of(kColumnBlanks, end);
    }
}

/// Where the quotes that open at `begin` are closed; npos if they are not. Two quotes in a row are one of the text.
std::size_t findClosingQuote(std::string_view line, std::size_t begin)
{
    std::size_t quote = line.find(kQuote, begin + 1);
    while (quote != line.npos && line.substr(quote + 1).starts_with(kQuote))
        quote = line.find(kQuote, quote + 2);
    return quote;
}

} // namespace

char delimiterArgument(const std::string& option, const std::string& text)
{
    constexpr std::string_view kDelimiters = ",;:|/!$%&*=?@^_~<>\t ";
    if (text == "tab")
        return '\t';
    if (text.size() != 1 || kDelimiters.find(text.front()) == kDelimiters.npos)
        throw wrongUsage(option, fmt::format("expected tab or one character such as , or ; or |, found {}", text));
    return text.front();
}

bool splitColumns(std::string_view line, Delimiter delimiter, std::vector<std::string_view>& columns)
{
    columns.clear();
    if (!delimiter) {
        splitAtBlanks(line, columns);
        return true;
    }
    for (std::size_t begin = 0;;) {
        const bool isQuoted = begin < line.size() && line[begin] == kQuote;
        const std::size_t quote = isQuoted ? findClosingQuote(line, begin) : begin;
        const std::size_t end = quote == line.npos ? line.npos : line.find(*delimiter, quote + (isQuoted ? 1 : 0));
        columns.push_back(line.substr(begin, end == line.npos ? end : end - begin));
        if (end == line.npos)
            return quote != line.npos;
        begin = end + 1;
    }
}

std::string columnText(std::string_view column, Delimiter delimiter)
{
    std::string text(column);
    if (delimiter && text.size() > 1 && text.starts_with(kQuote) && text.ends_with(kQuote)) {
        text = text.substr(1, text.size() - 2);
        for (std::size_t quote = text.find("\"\""); quote != text.npos; quote = text.find("\"\"", quote + 1))
            text.erase(quote, 1);
    }
    return std::string(Embedded::trim(std::string_view(text), kColumnBlanks));
}

std::string quotedColumn(const std::string& text, char delimiter)
{
    const char special[] = {delimiter, kQuote, '\r', '\n', '\0'};
    if (text.find_first_of(special) == text.npos)
        return text;
    std::string quoted(1, kQuote);
    for (const char character : text)
        quoted.append(character == kQuote ? 2 : 1, character);
    return quoted + kQuote;
}

} // namespace Orvelcs
