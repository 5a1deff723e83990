#include "text.h"

#include <algorithm>
#include <cstddef>

namespace Core {
namespace {

constexpr char32_t unknownCharacter = 0xFFFD;

bool isHighSurrogate(char32_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

bool isLowSurrogate(char32_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

void appendUtf16(std::u16string& text, char32_t character)
{
    if (character < 0x10000) {
        text.push_back(static_cast<char16_t>(character));
        return;
    }
    text.push_back(static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10)));
    text.push_back(static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF)));
}

void appendUtf8(std::string& text, char32_t character)
{
    const auto add = [&text](char32_t byte) { text.push_back(static_cast<char>(static_cast<unsigned char>(byte))); };
    if (character < 0x80) {
        add(character);
        return;
    }
    const int followers = character < 0x800 ? 1 : character < 0x10000 ? 2 : 3;
    const char32_t lead = followers == 1 ? 0xC0 : followers == 2 ? 0xE0 : 0xF0;
    add(lead | (character >> (6 * followers)));
    for (int rest = followers - 1; rest >= 0; --rest)
        add(0x80 | ((character >> (6 * rest)) & 0x3F));
}

// Takes one character off the front of UTF-16.
char32_t takeUtf16(std::u16string_view& text)
{
    const char32_t unit = text.front();
    text.remove_prefix(1);
    if (!isHighSurrogate(unit) || text.empty() || !isLowSurrogate(text.front()))
        return unit;
    const char32_t low = text.front();
    text.remove_prefix(1);
    return 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
}

// Takes one character off the front of UTF-8. Bytes that are no UTF-8 give U+FFFD, one for each broken sequence.
char32_t takeUtf8(std::string_view& text)
{
    const auto lead = static_cast<unsigned char>(text.front());
    text.remove_prefix(1);
    if (lead < 0x80)
        return lead;
    const int followers = lead >= 0xC2 && lead < 0xE0   ? 1
                          : lead >= 0xE0 && lead < 0xF0 ? 2
                          : lead >= 0xF0 && lead < 0xF5 ? 3
                                                        : 0;
    if (followers == 0)
        return unknownCharacter;
    char32_t character = lead & (0x3Fu >> followers);
    for (int count = 0; count < followers; ++count) {
        const auto byte = text.empty() ? 0u : static_cast<unsigned char>(text.front());
        // The second byte tells sequences that are too long, surrogates and what lies beyond U+10FFFF.
        const unsigned low = count > 0 ? 0x80 : lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
        const unsigned high = count > 0 ? 0xBF : lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
        if (byte < low || byte > high)
            return unknownCharacter;
        character = (character << 6) | (byte & 0x3F);
        text.remove_prefix(1);
    }
    return character;
}

} // namespace

std::u16string toUtf16(std::string_view utf8)
{
    std::u16string text;
    while (!utf8.empty())
        appendUtf16(text, takeUtf8(utf8));
    return text;
}

std::u16string toUtf16(std::wstring_view wide)
{
    std::u16string text;
    for (const wchar_t character : wide)
        appendUtf16(text, static_cast<char32_t>(character));
    return text;
}

std::string toUtf8(std::u16string_view utf16)
{
    std::string text;
    while (!utf16.empty()) {
        const char32_t character = takeUtf16(utf16);
        appendUtf8(text, isHighSurrogate(character) || isLowSurrogate(character) ? unknownCharacter : character);
    }
    return text;
}

std::string toUtf8(std::wstring_view wide)
{
    return toUtf8(toUtf16(wide));
}

std::wstring toWide(std::u16string_view utf16)
{
    std::wstring text;
    while (!utf16.empty()) {
        if constexpr (sizeof(wchar_t) == sizeof(char16_t)) {
            text.push_back(static_cast<wchar_t>(utf16.front()));
            utf16.remove_prefix(1);
        } else {
            text.push_back(static_cast<wchar_t>(takeUtf16(utf16)));
        }
    }
    return text;
}

std::wstring toWide(std::string_view utf8)
{
    return toWide(toUtf16(utf8));
}

bool sameCode(std::string_view left, std::string_view right)
{
    const auto lower = [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
    };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [lower](char one, char other) { return lower(one) == lower(other); });
}

} // namespace Core
