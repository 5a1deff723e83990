#include "storage/utf16le.h"

namespace Orvel {
namespace {

constexpr char32_t kFirstSupplementary = 0x10000;
constexpr char32_t kLastCodePoint = 0x10FFFF;
constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kHighSurrogate = 0xD800;
constexpr char32_t kLowSurrogate = 0xDC00;
constexpr char32_t kSurrogateBits = 0x3FF;

void appendUnit(std::vector<unsigned char>& bytes, char32_t unit)
{
    bytes.push_back(static_cast<unsigned char>(unit & 0xFF));
    bytes.push_back(static_cast<unsigned char>(unit >> 8 & 0xFF));
}

/// A supplementary code point, where the system's wide characters hold one, becomes a pair of units.
void appendWideCharacter(std::vector<unsigned char>& bytes, char32_t character)
{
    if (character < kFirstSupplementary) {
        appendUnit(bytes, character);
        return;
    }
    if (character > kLastCodePoint) {
        appendUnit(bytes, kReplacement);
        return;
    }
    const char32_t offset = character - kFirstSupplementary;
    appendUnit(bytes, kHighSurrogate + (offset >> 10 & kSurrogateBits));
    appendUnit(bytes, kLowSurrogate + (offset & kSurrogateBits));
}

constexpr bool isHigh(char32_t unit)
{
    return (unit & ~kSurrogateBits) == kHighSurrogate;
}
constexpr bool isLow(char32_t unit)
{
    return (unit & ~kSurrogateBits) == kLowSurrogate;
}

/// Joins a unit to the text: where wide characters are code points, a low surrogate completes a high one before it.
void appendUnitToText(std::wstring& text, char32_t unit)
{
    if constexpr (sizeof(wchar_t) > 2) {
        if (isLow(unit) && !text.empty() && isHigh(static_cast<char32_t>(text.back()))) {
            const char32_t high = static_cast<char32_t>(text.back()) & kSurrogateBits;
            text.back() = static_cast<wchar_t>(kFirstSupplementary + (high << 10) + (unit & kSurrogateBits));
            return;
        }
    }
    text += static_cast<wchar_t>(unit);
}

} // namespace

std::vector<unsigned char> Utf16leBytes(std::wstring_view text)
{
    std::vector<unsigned char> bytes;
    bytes.reserve((text.size() + 1) * 2);
    for (const wchar_t character : text)
        appendWideCharacter(bytes, static_cast<char32_t>(character));
    appendUnit(bytes, U'\0');
    return bytes;
}

std::wstring TextFromUtf16le(const unsigned char* bytes, std::size_t lengthInBytes)
{
    std::wstring text;
    for (std::size_t index = 0; index + 1 < lengthInBytes; index += 2) {
        const auto unit = static_cast<char32_t>(bytes[index] | bytes[index + 1] << 8);
        if (unit == U'\0')
            break;
        appendUnitToText(text, unit);
    }
    return text;
}

std::size_t Utf16leLength(const unsigned char* text)
{
    std::size_t length = 0;
    while (text[length] != 0 || text[length + 1] != 0)
        length += 2;
    return length;
}

} // namespace Orvel
