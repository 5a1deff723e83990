// Pairs of UTF-16 surrogates, which stand for the code points above U+FFFF.
#pragma once

namespace Embedded {

/// Stands in a text for each character that could not be read.
inline constexpr char32_t kReplacementCharacter = 0xFFFD;
/// A wide character is a UTF-16 unit on Windows and a code point elsewhere.
inline constexpr bool kWideIsUtf16 = sizeof(wchar_t) == 2;

constexpr bool isHighSurrogate(char32_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

constexpr bool isLowSurrogate(char32_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// Returns whether the number is a Unicode scalar value: a code point up to U+10FFFF that is not a surrogate.
constexpr bool isScalarValue(char32_t number)
{
    return number <= 0x10FFFF && !isHighSurrogate(number) && !isLowSurrogate(number);
}

constexpr char32_t codePointFromSurrogates(char32_t high, char32_t low)
{
    return 0x10000 + ((high - 0xD800) << 10) + (low - 0xDC00);
}

constexpr char32_t highSurrogate(char32_t codePoint)
{
    return 0xD800 + ((codePoint - 0x10000) >> 10);
}

constexpr char32_t lowSurrogate(char32_t codePoint)
{
    return 0xDC00 + ((codePoint - 0x10000) & 0x3FF);
}

} // namespace Embedded
