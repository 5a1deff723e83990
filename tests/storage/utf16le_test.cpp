#include "storage/utf16le.h"

#include <gtest/gtest.h>

#include "storage/byte_patterns.h"

namespace Tests {
namespace {

using Orvel::decodeUtf16le;
using Orvel::encodeUtf16le;

std::wstring decode(const Bytes& bytes)
{
    return decodeUtf16le(bytes.data(), bytes.size());
}

TEST(Utf16le, EmptyTextIsTheTerminatingNul)
{
    EXPECT_EQ(encodeUtf16le(L""), (Bytes{0, 0}));
}

TEST(Utf16le, LowByteComesFirst)
{
    EXPECT_EQ(encodeUtf16le(L"A\x00E4\x4E16"), (Bytes{0x41, 0x00, 0xE4, 0x00, 0x16, 0x4E, 0, 0}));
}

TEST(Utf16le, LengthIsTwoBytesForEachUnitAndForTheNul)
{
    EXPECT_EQ(encodeUtf16le(std::wstring(1000, L'x')).size(), 2002U);
}

TEST(Utf16le, SupplementaryCharacterIsAPairOfSurrogates)
{
    EXPECT_EQ(encodeUtf16le(L"\U0001F30D"), (Bytes{0x3C, 0xD8, 0x0D, 0xDF, 0, 0}));
    EXPECT_EQ(encodeUtf16le(L"\U00010000"), (Bytes{0x00, 0xD8, 0x00, 0xDC, 0, 0}));
    EXPECT_EQ(encodeUtf16le(L"\U0010FFFF"), (Bytes{0xFF, 0xDB, 0xFF, 0xDF, 0, 0}));
}

// Characters are encoded in blocks as long as each is one unit.
TEST(Utf16le, SupplementaryCharacterAtAnyPlaceOfATextOfAnyLengthIsAPair)
{
    for (std::size_t length = 0; length <= 50; ++length) {
        for (std::size_t at = 0; at <= length; ++at) {
            SCOPED_TRACE(std::to_string(at) + " of " + std::to_string(length));
            std::wstring text;
            Bytes bytes;
            for (std::size_t index = 0; index < length; ++index) {
                text += static_cast<wchar_t>(0xFF00 - index * 0xF1);
                bytes.push_back(static_cast<unsigned char>((0xFF00 - index * 0xF1) & 0xFF));
                bytes.push_back(static_cast<unsigned char>((0xFF00 - index * 0xF1) >> 8));
            }
            const Bytes pair{0x3C, 0xD8, 0x0D, 0xDF};
            text.insert(at, L"\U0001F30D");
            bytes.insert(bytes.begin() + static_cast<std::ptrdiff_t>(at * 2), pair.begin(), pair.end());
            bytes.insert(bytes.end(), {0, 0});
            EXPECT_EQ(encodeUtf16le(text), bytes);
        }
    }
}

TEST(Utf16le, TextOfTheFirstSupplementaryCharacterAloneIsPairs)
{
    std::wstring text;
    Bytes bytes;
    for (int index = 0; index < 40; ++index) {
        text += L"\U00010000";
        bytes.insert(bytes.end(), {0x00, 0xD8, 0x00, 0xDC});
    }
    bytes.insert(bytes.end(), {0, 0});
    EXPECT_EQ(encodeUtf16le(text), bytes);
}

TEST(Utf16le, LastCharacterOfOneUnitIsOneUnit)
{
    EXPECT_EQ(encodeUtf16le(L"\xFFFF"), (Bytes{0xFF, 0xFF, 0, 0}));
}

TEST(Utf16le, ValueAboveTheLastCharacterBecomesTheReplacementCharacter)
{
    if (sizeof(wchar_t) == 2)
        GTEST_SKIP() << "every wide character is a unit of the text here";
    for (const char32_t beyond : {U'\x110000', U'\x7FFFFFFF'})
        EXPECT_EQ(encodeUtf16le(std::wstring(1, static_cast<wchar_t>(beyond))), (Bytes{0xFD, 0xFF, 0, 0}));
}

TEST(Utf16le, UnpairedSurrogatesAreKept)
{
    const std::wstring text{static_cast<wchar_t>(0xD800), L'a', static_cast<wchar_t>(0xDC00)};
    EXPECT_EQ(encodeUtf16le(text), (Bytes{0x00, 0xD8, 0x61, 0x00, 0x00, 0xDC, 0, 0}));
    EXPECT_EQ(decode({0x00, 0xD8, 0x61, 0x00, 0x00, 0xDC, 0, 0}), text);
}

TEST(Utf16le, HighSurrogateBeforeACharacterAboveTheSurrogatesStaysUnpaired)
{
    for (const wchar_t behind : {L'\xE000', L'\xFFFD'}) {
        const std::wstring text{static_cast<wchar_t>(0xD83C), behind};
        EXPECT_EQ(decode(encodeUtf16le(text)), text);
    }
}

TEST(Utf16le, SurrogatesInTheWrongOrderStayUnpaired)
{
    const std::wstring text{static_cast<wchar_t>(0xDC00), static_cast<wchar_t>(0xD800)};
    EXPECT_EQ(decode(encodeUtf16le(text)), text);
}

TEST(Utf16le, SurrogatePairIsDecodedToTheSystemsCharacter)
{
    EXPECT_EQ(decode({0x3C, 0xD8, 0x0D, 0xDF, 0, 0}), L"\U0001F30D");
}

TEST(Utf16le, HighSurrogateBeforeAPairStaysUnpaired)
{
    std::wstring text{static_cast<wchar_t>(0xD800)};
    text += L"\U0001F30D";
    EXPECT_EQ(decode({0x00, 0xD8, 0x3C, 0xD8, 0x0D, 0xDF, 0, 0}), text);
}

TEST(Utf16le, LowSurrogateAfterAPairStaysUnpaired)
{
    std::wstring text = L"\U0001F30D";
    text += static_cast<wchar_t>(0xDC00);
    EXPECT_EQ(decode({0x3C, 0xD8, 0x0D, 0xDF, 0x00, 0xDC, 0, 0}), text);
}

TEST(Utf16le, HighSurrogateBeforeTheTextIsNotRead)
{
    const Bytes bytes{0x3C, 0xD8, 0x0D, 0xDF};
    EXPECT_EQ(decodeUtf16le(bytes.data() + 2, 2), std::wstring(1, static_cast<wchar_t>(0xDF0D)));
}

TEST(Utf16le, TextEndsAtItsFirstNul)
{
    EXPECT_EQ(decode({0x41, 0, 0, 0, 0x42, 0}), L"A");
}

TEST(Utf16le, UnitWithAZeroByteIsNotANul)
{
    EXPECT_EQ(decode({0x00, 0x01, 0x41, 0x00, 0, 0}), L"\x0100"
                                                      L"A");
}

TEST(Utf16le, UnitWithAZeroByteDoesNotEndTheLength)
{
    EXPECT_EQ(Orvel::utf16leLength(Bytes{0x00, 0x01, 0x41, 0x00, 0, 0}.data()), 4U);
    EXPECT_EQ(Orvel::utf16leLength(Bytes{0x42, 0x00, 0x00, 0x01, 0x41, 0x00, 0, 0}.data()), 6U);
}

TEST(Utf16le, TextWithoutANulEndsWithTheBytes)
{
    EXPECT_EQ(decode({0x41, 0, 0x42, 0}), L"AB");
}

TEST(Utf16le, OddLastByteIsIgnored)
{
    EXPECT_EQ(decode({0x41, 0, 0x42}), L"A");
    EXPECT_EQ(decode({0x41}), L"");
}

TEST(Utf16le, NoBytesDecodeToAnEmptyText)
{
    EXPECT_EQ(decode({}), L"");
    EXPECT_EQ(decodeUtf16le(nullptr, 0), L"");
}

TEST(Utf16le, EveryUnitIsDecodedAsItWasEncoded)
{
    std::wstring text;
    for (unsigned unit = 1; unit < 0x10000; ++unit) {
        text += static_cast<wchar_t>(unit);
        text += L'.'; // keeps surrogates apart
    }
    EXPECT_TRUE(decode(encodeUtf16le(text)) == text);
}

TEST(Utf16le, CharactersOfEverySupplementaryPlaneAreDecodedAsTheyWereEncoded)
{
    std::wstring text;
    for (char32_t character = 0x10000; character < 0x110000; character += 0x3FD) {
        const char32_t offset = character - 0x10000;
        if (sizeof(wchar_t) > 2) {
            text += static_cast<wchar_t>(character);
            continue;
        }
        text += static_cast<wchar_t>(0xD800 + (offset >> 10));
        text += static_cast<wchar_t>(0xDC00 + (offset & 0x3FF));
    }
    EXPECT_TRUE(decode(encodeUtf16le(text)) == text);
}

} // namespace
} // namespace Tests
