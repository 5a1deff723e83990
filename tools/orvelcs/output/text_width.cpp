#include "orvelcs/output/text_width.h"

#include <algorithm>
#include <string_view>

#include "embedded/base/text.h"

namespace Orvelcs {
namespace {

/// Characters and the width of the widest of them, as a share of the font's size.
struct WidthClass {
    std::wstring_view characters;
    double width;
};
constexpr WidthClass kWidthClasses[] = {
    {L"ijlI.,:;'|! \u00B7", 0.4}, {L"frt()[]-/\"{}\\", 0.46}, {L"mwMW@%\u2026", 1}, {L"+=<>~#&\u00B1", 0.86}};
constexpr double kCapitalWidth = 0.79;
constexpr double kOtherWidth = 0.64; // of digits and small letters
constexpr double kFullWidth = 1;
constexpr wchar_t kFirstFullWidth = L'\x0300'; // of scripts that are not Latin

double characterWidth(wchar_t character)
{
    for (const auto& [characters, width] : kWidthClasses)
        if (characters.find(character) != std::wstring_view::npos)
            return width;
    if (character >= kFirstFullWidth)
        return kFullWidth;
    const bool isCapital = (character >= L'A' && character <= L'Z') || character > L'\x7F';
    return isCapital ? kCapitalWidth : kOtherWidth;
}

double widthOf(std::wstring_view text, double fontSize)
{
    double width = 0;
    for (const wchar_t character : text)
        width += characterWidth(character);
    return width * fontSize;
}

/// How many characters at the beginning fit, at least one.
std::size_t fittingLength(std::wstring_view text, double fontSize, double width)
{
    std::size_t length = 0;
    double used = 0;
    while (length < text.size() && (used += characterWidth(text[length]) * fontSize) <= width)
        ++length;
    return std::max<std::size_t>(length, 1);
}

/// Takes a line from the beginning of the text.
std::wstring_view takeLine(std::wstring_view& text, double fontSize, double width)
{
    std::size_t length = fittingLength(text, fontSize, width);
    if (length < text.size() && text[length] != L' ')
        if (const std::size_t blank = text.substr(0, length).rfind(L' '); blank != std::wstring_view::npos && blank > 0)
            length = blank;
    const std::wstring_view line = text.substr(0, length);
    text.remove_prefix(std::min(text.find_first_not_of(L' ', length), text.size()));
    return line;
}

} // namespace

double textWidth(std::string_view utf8, double fontSize)
{
    return widthOf(Embedded::wideFromUtf8(utf8), fontSize);
}

std::vector<std::string> fitIntoLines(std::string_view utf8, double fontSize, double width, std::size_t mostLines)
{
    const std::wstring text = Embedded::wideFromUtf8(utf8);
    std::wstring_view rest = text;
    std::vector<std::string> lines;
    while (!rest.empty() && lines.size() + 1 < mostLines)
        lines.push_back(Embedded::utf8FromWide(takeLine(rest, fontSize, width)));
    if (rest.empty())
        return lines;
    constexpr std::wstring_view kCut = L"\u2026";
    if (widthOf(rest, fontSize) <= width) {
        lines.push_back(Embedded::utf8FromWide(rest));
    } else {
        const std::wstring_view kept = rest.substr(0, fittingLength(rest, fontSize, width - widthOf(kCut, fontSize)));
        lines.push_back(Embedded::utf8FromWide(kept) + Embedded::utf8FromWide(kCut));
    }
    return lines;
}

} // namespace Orvelcs
