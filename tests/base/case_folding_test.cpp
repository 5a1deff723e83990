#include "embedded/base/case_folding.h"

#include <clocale>
#include <string>

#include <gtest/gtest.h>

namespace Tests {
namespace {

using Embedded::equalsIgnoringAsciiCase;
using Embedded::toLowerAscii;
using Embedded::toLowerCase;
using Embedded::toUpperAscii;

TEST(CaseFolding, ToLowerAscii_ChangesOnlyAToZ)
{
    EXPECT_EQ(toLowerAscii("@AZ[`az{09"), "@az[`az{09");
    EXPECT_EQ(toLowerAscii(L"EPSG:Ä\x0130"), L"epsg:Ä\x0130");
    EXPECT_EQ(toLowerAscii("\xC3\x84"), "\xC3\x84");
}

TEST(CaseFolding, ToUpperAscii_ChangesOnlyAToZ)
{
    EXPECT_EQ(toUpperAscii("@AZ[`az{09"), "@AZ[`AZ{09");
    EXPECT_EQ(toUpperAscii("\xC3\xA4"), "\xC3\xA4");
}

TEST(CaseFolding, EqualsIgnoringAsciiCase_IgnoresOnlyAToZ)
{
    EXPECT_TRUE(equalsIgnoringAsciiCase("Epsg", "ePSG"));
    EXPECT_TRUE(equalsIgnoringAsciiCase(L"Model_Space", L"MODEL_SPACE"));
    EXPECT_FALSE(equalsIgnoringAsciiCase("EPSG", "EPSG:"));
    EXPECT_FALSE(equalsIgnoringAsciiCase("@", "`"));
    EXPECT_FALSE(equalsIgnoringAsciiCase(L"Ä", L"ä"));
}

TEST(CaseFolding, LatinGreekAndCyrillicLetters_BecomeLowerCase)
{
    EXPECT_EQ(toLowerCase(L"AZ ÀÖØÞ ĀĮ ĲĶ ĹŇ ŊŶ ŹŽ ΈΊ ΑΡΣΫ ЀЏ АЯ"), L"az àöøþ āį ĳķ ĺň ŋŷ źž έί αρσϋ ѐџ ая");
}

TEST(CaseFolding, OtherCharacters_StayUnchanged)
{
    for (const wchar_t* text : {L"@[`{", L"\xBF×ß÷", L"ĸŉ", L"\x1200", L"az àöøþ āį"})
        EXPECT_EQ(toLowerCase(text), text);
}

TEST(CaseFolding, Letters_DoNotDependOnTheLocale)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    std::wstring folded[2];
    std::setlocale(LC_ALL, "C");
    folded[0] = toLowerCase(L"RÉUNION Ω");
    std::setlocale(LC_ALL, "C.UTF-8");
    folded[1] = toLowerCase(L"RÉUNION Ω");
    std::setlocale(LC_ALL, before.c_str());
    EXPECT_EQ(folded[0], L"réunion ω");
    EXPECT_EQ(folded[1], L"réunion ω");
}

} // namespace
} // namespace Tests
