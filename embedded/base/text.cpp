#include "embedded/base/text.h"

#include <utf8.h>

#include <algorithm>
#include <iterator>

#include "embedded/base/ascii_run.h"
#include "embedded/base/surrogates.h"

namespace Embedded {
namespace {

/// Removes the first code point or unpaired surrogate from the text and returns it.
char32_t takeCodePoint(std::wstring_view& text)
{
    const auto first = static_cast<char32_t>(text.front());
    text.remove_prefix(1);
    if (!kWideIsUtf16 || !isHighSurrogate(first) || text.empty() ||
        !isLowSurrogate(static_cast<char32_t>(text.front())))
        return first;
    const auto second = static_cast<char32_t>(text.front());
    text.remove_prefix(1);
    return codePointFromSurrogates(first, second);
}

void appendUtf16le(std::string& bytes, char32_t unit)
{
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8 & 0xFF);
}

void appendWide(std::wstring& text, char32_t codePoint)
{
    if (kWideIsUtf16 && codePoint > 0xFFFF) {
        text += static_cast<wchar_t>(highSurrogate(codePoint));
        text += static_cast<wchar_t>(lowSurrogate(codePoint));
    } else {
        text += static_cast<wchar_t>(codePoint);
    }
}

char32_t unitAt(std::string_view bytes, std::size_t index)
{
    const auto low = static_cast<unsigned char>(bytes[2 * index]);
    const auto high = static_cast<unsigned char>(bytes[2 * index + 1]);
    return static_cast<char32_t>(low | high << 8);
}

bool isContinuationByte(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

} // namespace

bool isAscii(std::string_view text)
{
    takeAscii(text);
    return text.empty();
}

std::string utf8FromWide(std::wstring_view text)
{
    const std::wstring_view ascii = takeAscii(text);
    std::string utf8(ascii.begin(), ascii.end());
    while (!text.empty()) {
        const char32_t codePoint = takeCodePoint(text);
        utf8::append(isScalarValue(codePoint) ? codePoint : kReplacementCharacter, std::back_inserter(utf8));
    }
    return utf8;
}

std::wstring wideFromUtf8(std::string_view utf8)
{
    const std::string_view ascii = takeAscii(utf8);
    std::wstring text(ascii.begin(), ascii.end());
    std::string valid;
    utf8::replace_invalid(utf8.begin(), utf8.end(), std::back_inserter(valid), kReplacementCharacter);
    for (auto position = valid.cbegin(); position != valid.cend();)
        appendWide(text, utf8::next(position, valid.cend()));
    return text;
}

bool isValidUtf8(std::string_view utf8)
{
    takeAscii(utf8);
    return utf8::is_valid(utf8.begin(), utf8.end());
}

std::string truncateForMessage(std::string_view utf8)
{
    constexpr std::size_t kMostBytes = 40;
    const auto isControl = [](char character) {
        return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
    };
    std::size_t length = std::min(utf8.size(), kMostBytes);
    while (length > 0 && length < utf8.size() && isContinuationByte(utf8[length]))
        --length;
    std::string shown = utf8FromWide(wideFromUtf8(utf8.substr(0, length)));
    std::replace_if(shown.begin(), shown.end(), isControl, '?');
    return length < utf8.size() ? shown + "…" : shown;
}

bool isWellFormed(std::wstring_view text)
{
    takeAscii(text);
    while (!text.empty()) {
        if (!isScalarValue(takeCodePoint(text)))
            return false;
    }
    return true;
}

std::string utf16leFromWide(std::wstring_view text)
{
    std::string bytes;
    bytes.reserve(text.size() * 2);
    while (!text.empty()) {
        const char32_t codePoint = takeCodePoint(text);
        if (codePoint > 0x10FFFF) {
            appendUtf16le(bytes, kReplacementCharacter);
        } else if (codePoint > 0xFFFF) {
            appendUtf16le(bytes, highSurrogate(codePoint));
            appendUtf16le(bytes, lowSurrogate(codePoint));
        } else {
            appendUtf16le(bytes, codePoint);
        }
    }
    return bytes;
}

std::wstring wideFromUtf16le(std::string_view bytes)
{
    const std::size_t units = bytes.size() / 2;
    std::wstring text;
    text.reserve(units);
    for (std::size_t index = 0; index < units; ++index) {
        const char32_t unit = unitAt(bytes, index);
        const bool isPair = isHighSurrogate(unit) && index + 1 < units && isLowSurrogate(unitAt(bytes, index + 1));
        appendWide(text, isPair ? codePointFromSurrogates(unit, unitAt(bytes, index + 1)) : unit);
        index += isPair ? 1 : 0;
    }
    return text;
}

} // namespace Embedded
