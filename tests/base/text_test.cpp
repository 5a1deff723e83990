#include "embedded/base/text.h"

#include <gtest/gtest.h>

namespace {

using namespace Embedded;
using namespace std::string_literals;

TEST(Text, AsciiAndAccents_AreConvertedToUtf8AndBack)
{
    EXPECT_EQ(utf8FromWide(L"K\u00F8benhavn"), "K\xC3\xB8"
                                               "benhavn");
    EXPECT_EQ(wideFromUtf8("K\xC3\xB8"
                           "benhavn"),
              L"K\u00F8benhavn");
}

TEST(Text, SupplementaryCharacters_AreConvertedToUtf8AndUtf16AndBack)
{
    EXPECT_EQ(utf8FromWide(L"\U0001F30D"), "\xF0\x9F\x8C\x8D");
    EXPECT_EQ(wideFromUtf8("\xF0\x9F\x8C\x8D"), L"\U0001F30D");
    EXPECT_EQ(utf16leFromWide(L"\U0001F30D"), "\x3C\xD8\x0D\xDF"s);
    EXPECT_EQ(wideFromUtf16le("\x3C\xD8\x0D\xDF"s), L"\U0001F30D");
}

TEST(Text, InvalidUtf8_BecomesReplacementCharacters)
{
    EXPECT_EQ(wideFromUtf8("a\xFFz"), L"a\uFFFDz");
    EXPECT_FALSE(isValidUtf8("a\xFFz"));
    EXPECT_TRUE(isValidUtf8("a\xC3\xB8"));
}

TEST(Text, UnpairedSurrogates_AreKeptInUtf16AndReplacedInUtf8)
{
    const std::wstring text = {L'a', static_cast<wchar_t>(0xD800), L'b'};
    EXPECT_FALSE(isWellFormed(text));
    EXPECT_EQ(utf16leFromWide(text), "a\0\x00\xD8"s
                                     "b\0"s);
    EXPECT_EQ(wideFromUtf16le(utf16leFromWide(text)), text);
    EXPECT_EQ(utf8FromWide(text), "a\xEF\xBF\xBD"
                                  "b");
}

TEST(Text, OddLastByteOfUtf16_IsIgnored)
{
    EXPECT_EQ(wideFromUtf16le("a\0b"s), L"a");
    EXPECT_EQ(wideFromUtf16le(""), L"");
}

TEST(Text, WellFormedText_IsRecognised)
{
    EXPECT_TRUE(isWellFormed(L""));
    EXPECT_TRUE(isWellFormed(L"plain \u00E9 \U0001F30D"));
}

} // namespace
