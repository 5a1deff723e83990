#include "embedded/spatial_reference/definitions/text_fault.h"

#include <algorithm>
#include <cctype>
#include <vector>

#include "embedded/base/case_folding.h"

namespace Embedded {
namespace {

constexpr std::string_view kWktBlanks = " \t\r\n\v\f";

bool startsCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U;
}

bool isWordCharacter(char character)
{
    return std::isalnum(static_cast<unsigned char>(character)) != 0 || character == '_';
}

bool opens(char character)
{
    return character == '[' || character == '(';
}

bool closes(char character)
{
    return character == ']' || character == ')';
}

/// The position behind the quotation mark that ends the quoted text; nothing when it has no end. A doubled mark is one
/// of the text.
std::optional<std::size_t> endOfQuoted(std::string_view text, std::size_t begin)
{
    for (std::size_t at = begin + 1; at < text.size(); ++at) {
        if (text[at] != '"')
            continue;
        if (at + 1 == text.size() || text[at + 1] != '"')
            return at + 1;
        ++at;
    }
    return std::nullopt;
}

/// Where the word stands alone and outside quotation marks. Nothing unless it does so exactly once.
std::optional<std::size_t> findOnce(std::string_view text, std::string_view word)
{
    const std::string lowerText = toLowerAscii(text);
    const std::string lowerWord = toLowerAscii(word);
    std::optional<std::size_t> found;
    for (std::size_t at = 0; at < lowerText.size(); ++at) {
        if (lowerText[at] == '"') {
            at = endOfQuoted(lowerText, at).value_or(lowerText.size()) - 1;
            continue;
        }
        const bool isHere =
            lowerText.compare(at, lowerWord.size(), lowerWord) == 0 &&
            (at == 0 || !isWordCharacter(lowerText[at - 1])) &&
            (at + lowerWord.size() >= lowerText.size() || !isWordCharacter(lowerText[at + lowerWord.size()]));
        if (isHere && found)
            return std::nullopt;
        if (isHere)
            found = at;
    }
    return found;
}

/// PROJ shows a part of the line, and below it a mark: "… Error occurred around:\n<part>\n     ^". Returns the position
/// of the mark in the text and removes the picture from the reason.
std::optional<std::size_t> takePicture(std::string_view text, std::string& reason)
{
    constexpr std::string_view kAround = " Error occurred around:";
    const std::size_t around = reason.find(kAround);
    if (around == std::string::npos)
        return std::nullopt;
    const std::string picture = reason.substr(around + kAround.size());
    reason.erase(around);
    if (reason.ends_with('.'))
        reason.pop_back();
    const std::size_t begin = picture.find_first_not_of("\r\n");
    const std::size_t end = begin == std::string::npos ? begin : picture.find('\n', begin);
    if (end == std::string::npos)
        return std::nullopt;
    const std::size_t mark = picture.find('^', end);
    const std::size_t part = text.find(std::string_view(picture).substr(begin, end - begin));
    if (mark == std::string::npos || part == std::string_view::npos)
        return std::nullopt;
    return part + (mark - end - 1);
}

/// What PROJ's reason is about: "SPHEROID" of "not enough children in SPHEROID node", "FOO" of "unhandled keyword:
/// FOO",
/// "+zone" of "Invalid value for zone", "+proj" of "Unknown projection".
std::string subjectOf(std::string_view reason)
{
    const auto wordBehind = [&](std::string_view words) {
        const std::size_t found = reason.find(words);
        if (found == std::string_view::npos)
            return std::string();
        const std::string_view rest = reason.substr(found + words.size());
        return std::string(rest.substr(0, rest.find_first_of(" .,:;")));
    };
    for (const std::string_view words : {"children in ", "unhandled keyword: ", "Invalid value for ", "value for "})
        if (std::string word = wordBehind(words); !word.empty())
            return word;
    return reason.find("Unknown projection") != std::string_view::npos ? "proj" : "";
}

} // namespace

std::string placeInText(std::string_view utf8, std::size_t offset)
{
    const std::string_view before = utf8.substr(0, std::min(offset, utf8.size()));
    const auto line = std::ranges::count(before, '\n') + 1;
    const std::size_t lineBegin = before.rfind('\n') + 1; // 0 on the first line
    const auto column = std::ranges::count_if(before.substr(lineBegin), startsCharacter) + 1;
    return "line " + std::to_string(line) + ", column " + std::to_string(column) + ": ";
}

std::optional<std::string> findSyntaxFault(std::string_view wkt)
{
    std::vector<std::size_t> open;
    for (std::size_t at = 0; at < wkt.size(); ++at) {
        if (wkt[at] == '"') {
            const auto end = endOfQuoted(wkt, at);
            if (!end)
                return placeInText(wkt, at) + "the quotation mark has no counterpart";
            if (const auto next = wkt.find_first_not_of(kWktBlanks, *end);
                next != std::string_view::npos && wkt[next] != ',' && !closes(wkt[next]))
                return placeInText(wkt, next) + "expected a comma or a closing bracket after the quoted text";
            at = *end - 1;
        } else if (opens(wkt[at])) {
            open.push_back(at);
        } else if (closes(wkt[at])) {
            if (open.empty())
                return placeInText(wkt, at) + "the bracket closes nothing";
            open.pop_back();
        }
    }
    if (open.empty())
        return std::nullopt;
    return placeInText(wkt, open.back()) + "the bracket is not closed";
}

std::string describeWithPlace(std::string_view utf8, std::string reason)
{
    if (const auto picture = takePicture(utf8, reason))
        return placeInText(utf8, *picture) + reason;
    const std::string subject = subjectOf(reason);
    const auto place = subject.empty() ? std::nullopt : findOnce(utf8, subject);
    return place ? placeInText(utf8, *place) + reason : reason;
}

} // namespace Embedded
