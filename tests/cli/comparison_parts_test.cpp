// The parts of the picture of a comparison: its grid, its scale, its contours, and the numbers in its page.
#include <gtest/gtest.h>

#include <cmath>

#include "orvelcs/output/map/contours.h"
#include "orvelcs/output/map/distance_scale.h"
#include "orvelcs/output/pages/base64.h"
#include "orvelcs/output/pages/field_encoding.h"

namespace Tests {
namespace {

using Orvelcs::DistanceGrid;
using Orvelcs::DistanceScale;
using Orvelcs::makeDistanceScale;
using Orvelcs::makeNodeGrid;
using Orvelcs::NodeGrid;
using Orvelcs::traceContour;

const double kNone = std::nan("");

/// The area that the rings enclose, in square degrees.
double areaOf(const std::vector<Orvelcs::PlaneLine>& rings)
{
    double sum = 0;
    for (const Orvelcs::PlaneLine& ring : rings)
        for (std::size_t index = 0; index < ring.size(); ++index) {
            const auto& from = ring[index];
            const auto& to = ring[(index + 1) % ring.size()];
            sum += (from.x * to.y - to.x * from.y) / 2;
        }
    return sum;
}

TEST(NodeGrid, HasItsEdgesAndRoundDegreesBetweenThem)
{
    const NodeGrid grid = makeNodeGrid({-4.87, 41.31, -3.9, 42.05}, 100);
    EXPECT_EQ(grid.latitudes, (std::vector{41.31, 41.4, 41.5, 41.6, 41.7, 41.8, 41.9, 42.0, 42.05}));
    EXPECT_EQ(grid.longitudes, (std::vector{-4.87, -4.8, -4.7, -4.6, -4.5, -4.4, -4.3, -4.2, -4.1, -4.0, -3.9}));
    EXPECT_EQ(grid.points().at(12).latitude, 41.4);
    EXPECT_EQ(grid.points().at(12).longitude, -4.8);
}

TEST(NodeGrid, HasAtMostSoManyNodes)
{
    for (const std::size_t most : {50U, 500U, 5'000U, 40'000U}) {
        const NodeGrid grid = makeNodeGrid({-16.1, 25.71, 48.61, 84.73}, most);
        EXPECT_LE(grid.size(), most);
        EXPECT_GT(grid.size(), most / 8);
    }
}

TEST(NodeGrid, GoesOnAcrossTheAntimeridian)
{
    const NodeGrid grid = makeNodeGrid({176.81, -20.81, -178.15, -12.42}, 100);
    EXPECT_EQ(grid.longitudes.front(), 176.81);
    EXPECT_EQ(grid.longitudes.back(), 181.85);
    EXPECT_EQ(grid.points().back().longitude, -178.15);
}

TEST(DistanceScale, HasRoundStepsThatHoldAllDistances)
{
    std::vector<double> metres;
    for (int step = 0; step <= 100; ++step)
        metres.push_back(1.21 + 0.0117 * step);
    const DistanceScale scale = makeDistanceScale(metres);
    EXPECT_EQ(scale.boundText(0), "1.2");
    EXPECT_EQ(scale.boundText(scale.bandCount()), "2.4");
    EXPECT_EQ(scale.bandCount(), 6U);
    EXPECT_FALSE(scale.hasGaps);
}

TEST(DistanceScale, FewMuchLargerDistancesShareTheLastBand)
{
    std::vector<double> metres(200, 1.0);
    for (std::size_t index = 0; index < 150; ++index)
        metres[index] = static_cast<double>(index) / 100;
    metres.back() = 250;
    const DistanceScale scale = makeDistanceScale(metres);
    EXPECT_LT(scale.bounds[scale.bandCount() - 1], 2);
    EXPECT_DOUBLE_EQ(scale.bounds.back(), 250);
}

TEST(DistanceScale, EqualDistancesAreOneBand)
{
    const DistanceScale scale = makeDistanceScale({3.2141, 3.2142, kNone});
    EXPECT_TRUE(scale.isUniform);
    EXPECT_TRUE(scale.hasGaps);
    EXPECT_EQ(scale.bandCount(), 1U);
    EXPECT_EQ(makeDistanceScale({kNone}).bandCount(), 0U);
}

TEST(DistanceScale, ColoursDarkenEvenly)
{
    const auto lightness = [](double share) { // CIE L*
        const std::string colour = Orvelcs::cividisColour(share);
        const auto linear = [&](std::size_t start) {
            const double part = std::stoi(colour.substr(start, 2), nullptr, 16) / 255.0;
            return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 116 * std::cbrt(0.2126 * linear(1) + 0.7152 * linear(3) + 0.0722 * linear(5)) - 16;
    };
    EXPECT_EQ(Orvelcs::cividisColour(0), "#ffea46");
    EXPECT_EQ(Orvelcs::cividisColour(1), "#00204d");
    for (double share = 0.1; share < 1.05; share += 0.1) {
        const double step = lightness(share - 0.1) - lightness(share);
        EXPECT_GT(step, 7) << share;
        EXPECT_LT(step, 9) << share;
    }
}

TEST(Contour, CrossesTheGridWhereTheDistanceIsTheLevel)
{
    const DistanceGrid grid{{{0, 1, 2}, {0, 1}}, {0, 1, 2, 0, 1, 2}};
    const auto contour = traceContour(grid, 0.5);
    ASSERT_EQ(contour.rings.size(), 1U);
    EXPECT_DOUBLE_EQ(areaOf(contour.rings), 1.5);
    ASSERT_EQ(contour.lines.size(), 1U);
    for (const auto& point : contour.lines.front())
        EXPECT_DOUBLE_EQ(point.x, 0.5);
}

TEST(Contour, LeavesOutNodesWithoutADistance)
{
    const DistanceGrid grid{{{0, 1, 2}, {0, 1, 2}}, {5, 5, 5, 5, kNone, 5, 5, 5, 5}};
    const auto contour = traceContour(grid, 5);
    EXPECT_TRUE(contour.lines.empty());
    EXPECT_DOUBLE_EQ(areaOf(contour.rings), 4 - 4 * 0.5);
}

TEST(Contour, OfASummitIsOneClosedLine)
{
    const DistanceGrid grid{{{0, 1, 2}, {0, 1, 2}}, {0, 0, 0, 0, 4, 0, 0, 0, 0}};
    const auto contour = traceContour(grid, 2);
    ASSERT_EQ(contour.lines.size(), 1U);
    EXPECT_EQ(contour.lines.front().front(), contour.lines.front().back());
    EXPECT_DOUBLE_EQ(areaOf(contour.rings), 0.5);
}

TEST(Contour, OfASaddleFollowsTheMean)
{
    const DistanceGrid grid{{{0, 1}, {0, 1}}, {4, 0, 0, 4}};
    EXPECT_EQ(traceContour(grid, 1).rings.size(), 1U);
    EXPECT_EQ(traceContour(grid, 3).rings.size(), 2U);
}

TEST(FieldEncoding, StoresDifferencesInGroupsOfSevenBits)
{
    // 300; 1 more than west; 1 less than south; equal to west + south - southwest.
    EXPECT_EQ(Orvelcs::encodeField({300, 301, 299, 300}, 2),
              Orvelcs::encodeBase64("\xD8\x04\x02\x01" + std::string(1, '\0')));
}

TEST(Base64, PadsTheLastGroup)
{
    EXPECT_EQ(Orvelcs::encodeBase64(""), "");
    EXPECT_EQ(Orvelcs::encodeBase64("M"), "TQ==");
    EXPECT_EQ(Orvelcs::encodeBase64("Ma"), "TWE=");
    EXPECT_EQ(Orvelcs::encodeBase64("Man"), "TWFu");
}

} // namespace
} // namespace Tests
