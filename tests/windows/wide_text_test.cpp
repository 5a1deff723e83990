#include "platform/win32.h"
#include "support/platform_test.h"

namespace {

TEST(WideText, Comparison_IgnoresTheCaseOfAsciiLetters)
{
    EXPECT_EQ(_wcsicmp(L"epsg:25832", L"EPSG:25832"), 0);
    EXPECT_LT(_wcsicmp(L"EPSG:1", L"epsg:2"), 0);
    EXPECT_GT(_wcsicmp(L"b", L"A"), 0);
    EXPECT_LT(_wcsicmp(L"abc", L"abcd"), 0);
    EXPECT_GT(_wcsicmp(L"abcd", L"abc"), 0);
    EXPECT_EQ(_wcsicmp(L"", L""), 0);
}

TEST(WideText, BoundedComparison_StopsAtItsBound)
{
    EXPECT_EQ(_wcsnicmp(L"EPSG:1", L"epsg:2", 5), 0);
    EXPECT_LT(_wcsnicmp(L"EPSG:1", L"epsg:2", 6), 0);
    EXPECT_GT(_wcsnicmp(L"b", L"A", 1), 0);
    EXPECT_EQ(_wcsnicmp(L"a", L"b", 0), 0);
}

TEST(WideText, BoundedComparison_EndsWithTheText)
{
    EXPECT_EQ(_wcsnicmp(L"ab\0c", L"AB\0d", 4), 0);
    EXPECT_LT(_wcsnicmp(L"ab", L"abc", 9), 0);
}

TEST(WideText, OtherLetters_AreComparedExactly)
{
    EXPECT_NE(_wcsicmp(L"\u00C4", L"\u00E4"), 0);
}

TEST(WideText, CharactersNextToTheLetters_AreComparedExactly)
{
    EXPECT_NE(_wcsicmp(L"[", L"{"), 0);
    EXPECT_NE(_wcsicmp(L"@", L"`"), 0);
}

} // namespace
