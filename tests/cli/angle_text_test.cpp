// Angles in degrees, minutes and seconds.
#include "orvelcs/output/angle_text.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <numbers>
#include <string>

namespace Tests {
namespace {

using Embedded::AxisDirection;
using Embedded::AxisUnit;
using Orvelcs::Angle;
using Orvelcs::angleOnAxis;
using Orvelcs::parseAngle;

constexpr double kDegree = std::numbers::pi / 180;
constexpr double kFifteen = 52 + 30 / 60.0 + 15.5 / 3600;

void expectAngle(const std::string& text, double degrees, AxisDirection hemisphere = AxisDirection::other)
{
    const auto angle = parseAngle(text);
    ASSERT_TRUE(angle) << text;
    EXPECT_DOUBLE_EQ(angle->degrees, degrees) << text;
    EXPECT_EQ(angle->hemisphere, hemisphere) << text;
}

TEST(AngleText, MarksOfDegreesMinutesAndSeconds_AreRead)
{
    for (const char* text : {"52d30'15.5\"", "52D30'15.5\"", "52\u00B030'15.5\"", "52\u00B030\u203215.5\u2033",
                             "52\u00B030\u201915.5\u201D", "52:30:15.5", " 52\u00B0 30' 15.5\" ", "52 : 30\t: 15.5",
                             "52d30'15.5", "052d030'015.50\"", "+52:30:15.5"})
        expectAngle(text, kFifteen);
    expectAngle("-52d30'15.5\"", -kFifteen);
    expectAngle("52d30'", 52.5);
    expectAngle("52d30.5'", 52 + 30.5 / 60);
    expectAngle("52d30", 52.5);
    expectAngle("52:30", 52.5);
    expectAngle("52.5d", 52.5);
    expectAngle("52", 52);
    expectAngle("0d0'59.999\"", 59.999 / 3600);
    expectAngle("-0d30'", -0.5);
}

TEST(AngleText, Hemispheres_StandOnEitherSide)
{
    expectAngle("52d30'15.5\"N", kFifteen, AxisDirection::north);
    expectAngle("52:30:15.5S", kFifteen, AxisDirection::south);
    expectAngle("E52\u00B030'15.5\"", kFifteen, AxisDirection::east);
    expectAngle("W 52.5", 52.5, AxisDirection::west);
    expectAngle("52.5 N", 52.5, AxisDirection::north);
}

TEST(AngleText, OtherTexts_AreNoAngles)
{
    for (const char* text : {"",
                             " ",
                             "N",
                             "-",
                             "d",
                             "52d30'15.5\"x",
                             "52d30'15.5\"NN",
                             "N52N",
                             "-52N",
                             "+52S",
                             "N-52",
                             "52n",
                             "52d60'",
                             "52d30'60\"",
                             "52d30'15\"1",
                             "52:30:15:1",
                             "52:",
                             ":30",
                             "52:30:",
                             "52:30'",
                             "52d30:15",
                             "52.5d30'",
                             "52d30.5'15\"",
                             "52'30\"",
                             "52\"",
                             "52d30\"",
                             "52 30 15",
                             "52d 30 15",
                             "1e5",
                             "52,5",
                             "52d-30'",
                             "52d+30'",
                             "nan",
                             "inf",
                             "0x10",
                             "52..5",
                             ".",
                             "52dd",
                             "52\u00B0\u00B0",
                             "52\xC2",
                             "--52",
                             "52d30'15.5\"\xFF"})
        EXPECT_FALSE(parseAngle(text)) << text;
    using namespace std::string_literals;
    EXPECT_FALSE(parseAngle("52d\0"s));
}

TEST(AngleText, EveryWholeSecond_IsReadAsItIsWritten)
{
    for (int seconds = 0; seconds < 3 * 3600; seconds += 7) {
        std::array<char, 40> text{};
        std::snprintf(text.data(), text.size(), "%dd%02d'%02d\"", seconds / 3600, seconds / 60 % 60, seconds % 60);
        expectAngle(text.data(), seconds / 3600.0);
    }
}

TEST(AngleText, Hemisphere_DecidesTheSignOnAnAxisOfItsKind)
{
    const AxisUnit north{true, kDegree, AxisDirection::north};
    const AxisUnit west{true, kDegree, AxisDirection::west};
    EXPECT_EQ(angleOnAxis({5, AxisDirection::north}, north), 5);
    EXPECT_EQ(angleOnAxis({5, AxisDirection::south}, north), -5);
    EXPECT_EQ(angleOnAxis({-5, AxisDirection::other}, north), -5);
    EXPECT_EQ(angleOnAxis({5, AxisDirection::west}, west), 5);
    EXPECT_EQ(angleOnAxis({5, AxisDirection::east}, west), -5);
    EXPECT_EQ(angleOnAxis({5, AxisDirection::east}, north), std::nullopt);
    EXPECT_EQ(angleOnAxis({5, AxisDirection::north}, west), std::nullopt);
    EXPECT_EQ(angleOnAxis({5, AxisDirection::north}, AxisUnit{true, kDegree, AxisDirection::other}), std::nullopt);
}

TEST(AngleText, AxisInAnotherUnit_GetsTheAngleInThatUnit)
{
    const AxisUnit grads{true, std::numbers::pi / 200, AxisDirection::north};
    EXPECT_DOUBLE_EQ(*angleOnAxis({45, AxisDirection::south}, grads), -50);
    const AxisUnit degrees{true, 0.017453292519943295, AxisDirection::north};
    EXPECT_EQ(angleOnAxis({kFifteen, AxisDirection::north}, degrees), kFifteen); // to the last bit
}

} // namespace
} // namespace Tests
