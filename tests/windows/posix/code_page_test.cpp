// Behaviour of the stand-in where Windows promises nothing, or where Wine differs from Windows.
#include <string>

#include "platform/win32.h"
#include "support/platform_test.h"

namespace {

using CodePageStandIn = Tests::PlatformTest;

TEST_F(CodePageStandIn, EachByteOfAnInvalidSequence_BecomesAReplacementCharacter)
{
    const struct {
        std::wstring text;
        std::string bytes;
    } table[] = {
        {L"\uFFFD\uFFFD\uFFFD", "\xE0\x80\xAF"},           // overlong
        {L"\uFFFD\uFFFD\uFFFD\uFFFD", "\xF0\x82\x82\xAC"}, // overlong
        {L"\uFFFD\uFFFD\uFFFD", "\xED\xA0\x80"},           // a surrogate
        {L"\uFFFD\uFFFD\uFFFD\uFFFD", "\xF4\x90\x80\x80"}, // beyond the last character
    };
    for (const auto& row : table) {
        wchar_t text[8] = {};
        const auto length = static_cast<int>(row.bytes.size());
        EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 0, row.bytes.data(), length, text, 8), length);
        EXPECT_EQ(text, row.text) << testing::PrintToString(row.bytes);
    }
}

// A wide character of Windows cannot hold these units.
TEST_F(CodePageStandIn, UnitBeyondUnicode_IsWrittenAsTheReplacementCharacter)
{
    for (const std::uint32_t unit : {0x110000U, 0xFFFFFFFFU}) {
        const auto character = static_cast<wchar_t>(unit);
        char bytes[8] = {};
        EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, &character, 1, bytes, 8, nullptr, nullptr), 3);
        EXPECT_STREQ(bytes, "\xEF\xBF\xBD");
    }
}

TEST_F(CodePageStandIn, OtherCodePagesFlagsAndDefaults_AreRefused)
{
    wchar_t text[4] = {};
    EXPECT_EQ(MultiByteToWideChar(1252, 0, "ab", 2, text, 4), 0);
    EXPECT_EQ(MultiByteToWideChar(CP_UTF8, 8, "ab", 2, text, 4), 0);
    char bytes[4] = {};
    BOOL used = FALSE;
    EXPECT_EQ(WideCharToMultiByte(1252, 0, L"ab", 2, bytes, 4, nullptr, nullptr), 0);
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"ab", 2, bytes, 4, "?", nullptr), 0);
    EXPECT_EQ(WideCharToMultiByte(CP_UTF8, 0, L"ab", 2, bytes, 4, nullptr, &used), 0);
}

} // namespace
