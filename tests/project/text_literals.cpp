#include "project/text_literals.h"

#include <algorithm>
#include <cstddef>

#include "project/source_tree.h"

namespace Tests {
namespace {

/// The length of the quoted literal that the text begins with, its quotes included.
std::size_t literalLength(std::string_view text)
{
    std::size_t end = 1;
    while (end < text.size() && text[end] != text.front())
        end += text[end] == '\\' ? 2U : 1U;
    return std::min(end + 1, text.size());
}

std::string unescape(std::string_view quoted)
{
    std::string value;
    for (std::size_t index = 1; index + 1 < quoted.size(); ++index) {
        if (quoted[index] != '\\')
            value += quoted[index];
        else if (quoted[++index] == '\\')
            value += '\\';
    }
    return value;
}

void appendLiterals(std::vector<std::string>& literals, std::string_view line)
{
    while (!line.empty() && !line.starts_with("//")) {
        const bool isText = line.front() == '"';
        const std::size_t length = isText || line.front() == '\'' ? literalLength(line) : 1U;
        if (isText)
            literals.push_back(unescape(line.substr(0, length)));
        line.remove_prefix(length);
    }
}

} // namespace

std::vector<std::string> collectTextLiterals(std::string_view source)
{
    std::vector<std::string> literals;
    for (const std::string& line : splitLines(source))
        if (!line.starts_with("#include"))
            appendLiterals(literals, line);
    return literals;
}

} // namespace Tests
