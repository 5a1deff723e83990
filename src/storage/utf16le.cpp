#include "storage/utf16le.h"

namespace Orvel {
namespace {

constexpr char32_t kFirstSupplementary = 0x10000;
constexpr char32_t kLastCodePoint = 0x10FFFF;
constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kHighSurrogate = 0xD800;
constexpr char32_t kLowSurrogate = 0xDC00;
constexpr char32_t kSurrogateBits = 0x3FF;
constexpr std::size_t kBlock = 16; // characters that are encoded at once, which compilers do in vectors
constexpr std::size_t kMostUnits = sizeof(wchar_t) > 2 ? 2 : 1; // of a wide character

unsigned char* putUnit(unsigned char* end, char32_t unit)
{
    *end++ = static_cast<unsigned char>(unit & 0xFF);
    *end++ = static_cast<unsigned char>(unit >> 8 & 0xFF);
    return end;
}

/// A supplementary code point becomes a pair of units.
unsigned char* putWideCharacter(unsigned char* end, char32_t character)
{
    if (character < kFirstSupplementary)
        return putUnit(end, character);
    if (character > kLastCodePoint)
        return putUnit(end, kReplacement);
    const char32_t offset = character - kFirstSupplementary;
    end = putUnit(end, kHighSurrogate + (offset >> 10 & kSurrogateBits));
    return putUnit(end, kLowSurrogate + (offset & kSurrogateBits));
}

/// Returns whether each of the characters is one unit.
bool areUnits(const wchar_t* characters)
{
    char32_t all = 0;
    for (std::size_t index = 0; index < kBlock; ++index)
        all |= static_cast<char32_t>(characters[index]);
    return all < kFirstSupplementary;
}

unsigned char* putUnits(unsigned char* end, const wchar_t* characters)
{
    for (std::size_t index = 0; index < kBlock; ++index)
        end = putUnit(end, static_cast<char32_t>(characters[index]));
    return end;
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

/// The character of a pair, where wide characters are code points. Elsewhere nothing calls it.
[[maybe_unused]] wchar_t joined(char32_t high, char32_t low)
{
    return static_cast<wchar_t>(kFirstSupplementary + ((high & kSurrogateBits) << 10) + (low & kSurrogateBits));
}

} // namespace

// Both write into memory of the longest possible result and cut it then. Appending unit by unit took eight times as
// long to encode and 1.4 times to decode.

std::vector<unsigned char> encodeUtf16le(std::wstring_view text)
{
    std::vector<unsigned char> bytes((text.size() * kMostUnits + 1) * 2);
    unsigned char* end = bytes.data();
    for (; text.size() >= kBlock && areUnits(text.data()); text.remove_prefix(kBlock))
        end = putUnits(end, text.data());
    for (const wchar_t character : text)
        end = putWideCharacter(end, static_cast<char32_t>(character));
    end = putUnit(end, U'\0');
    bytes.resize(static_cast<std::size_t>(end - bytes.data()));
    return bytes;
}

std::wstring decodeUtf16le(const unsigned char* bytes, std::size_t lengthInBytes)
{
    std::size_t length = 0; // up to the NUL
    while (length + 1 < lengthInBytes && unitAt(bytes + length) != U'\0')
        length += 2;
    std::wstring text(length / 2, L'\0');
    wchar_t* end = text.data();
    for (std::size_t index = 0; index < length; index += 2) {
        const char32_t unit = unitAt(bytes + index);
        if constexpr (sizeof(wchar_t) > 2) {
            if (isLow(unit) && index != 0 && isHigh(unitAt(bytes + index - 2))) {
                end[-1] = joined(unitAt(bytes + index - 2), unit);
                continue;
            }
        }
        *end++ = static_cast<wchar_t>(unit);
    }
    text.resize(static_cast<std::size_t>(end - text.data()));
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
