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

/// A supplementary code point becomes a pair of units.
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

char32_t unitAt(const unsigned char* bytes)
{
    return static_cast<char32_t>(bytes[0] | bytes[1] << 8);
}

/// The character of a pair, where wide characters are code points.
wchar_t joined(char32_t high, char32_t low)
{
    return static_cast<wchar_t>(kFirstSupplementary + ((high & kSurrogateBits) << 10) + (low & kSurrogateBits));
}

} // namespace

std::vector<unsigned char> encodeUtf16le(std::wstring_view text)
{
    std::vector<unsigned char> bytes;
    bytes.reserve((text.size() + 1) * 2);
    for (const wchar_t character : text)
        appendWideCharacter(bytes, static_cast<char32_t>(character));
    appendUnit(bytes, U'\0');
    return bytes;
}

std::wstring decodeUtf16le(const unsigned char* bytes, std::size_t lengthInBytes)
{
    std::wstring text;
    for (std::size_t index = 0; index + 1 < lengthInBytes; index += 2) {
        const char32_t unit = unitAt(bytes + index);
        if (unit == U'\0')
            break;
        if constexpr (sizeof(wchar_t) > 2) {
            if (index != 0 && isLow(unit) && isHigh(unitAt(bytes + index - 2))) {
                text.back() = joined(unitAt(bytes + index - 2), unit);
                continue;
            }
        }
        text += static_cast<wchar_t>(unit);
    }
    return text;
}

std::size_t utf16leLength(const unsigned char* text)
{
    std::size_t length = 0;
    while (text[length] != 0 || text[length + 1] != 0)
        length += 2;
    return length;
}

} // namespace Orvel
