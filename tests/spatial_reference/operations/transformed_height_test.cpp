// Heights of transformed points.
#include "spatial_reference/operations/coordinate_transformer_test.h"

namespace {

using namespace Tests;
using Embedded::CoordinatePoint;

class TransformedHeight : public CoordinateTransformerTest {
protected:
    /// A transformer with the grid of a geoid. Null if the grid is not installed.
    static Transformer geoidTransformer(const wchar_t* source, const wchar_t* target, const wchar_t* code)
    {
        auto result = Embedded::makeTransformer(source, target, transformation(code));
        return result ? *std::move(result) : nullptr;
    }
};

TEST_F(TransformedHeight, HeightBetweenSystemsWithoutHeights_IsKept)
{
    const auto shift = transformer(L"EPSG:4230", L"EPSG:25832", transformation(L"EPSG:1588"));
    EXPECT_EQ(transformed(*shift, {50, 9, 123.5}).z, 123.5);
    EXPECT_EQ(transformed(*shift, {50, 9, std::nullopt}).z, std::nullopt);
}

TEST_F(TransformedHeight, HeightBetweenSystemsOfTheSameHeights_IsKept)
{
    const auto shift = transformer(L"EPSG:7415", L"EPSG:7415"); // RD New + NAP height
    EXPECT_EQ(transformed(*shift, {100000, 400000, 5.0}).z, 5.0);
}

TEST_F(TransformedHeight, HeightForATargetWithoutHeights_IsKept)
{
    const auto shift = transformer(L"EPSG:7415", L"EPSG:4230", path(L"EPSG:4837"));
    EXPECT_EQ(transformed(*shift, {100000, 400000, 5.0}).z, 5.0);
}

TEST_F(TransformedHeight, HeightBetweenUnrelatedHeightSystems_FailsForThatPoint)
{
    const auto shift = transformer(L"EPSG:7415", L"EPSG:5555", transformation(L"EPSG:4830")); // NAP and DHHN92
    EXPECT_TRUE(shift->transform({100000, 400000, std::nullopt}).point.has_value());
    const auto withHeight = shift->transform({100000, 400000, 5.0});
    EXPECT_FALSE(withHeight.point.has_value());
    EXPECT_EQ(withHeight.point.error().message,
              "the heights of the two systems differ, and the operation does not say how");
}

TEST_F(TransformedHeight, ConversionToAGeocentricSystem_AlwaysGivesThreeCoordinates)
{
    const auto convert = transformer(L"EPSG:4979", L"EPSG:4978");
    const CoordinatePoint equator = transformed(*convert, {0, 0, 100.0});
    expectNear(equator, 6378237, 0, kMetres);
    EXPECT_NEAR(equator.z.value_or(-1), 0, kMetres);
    EXPECT_NEAR(transformed(*convert, {0, 0, std::nullopt}).x, 6378137, kMetres);
    EXPECT_TRUE(transformed(*convert, {0, 0, std::nullopt}).z.has_value());
}

TEST_F(TransformedHeight, ConversionFromAGeocentricSystem_NeedsAllThreeCoordinates)
{
    const auto convert = transformer(L"EPSG:4978", L"EPSG:4979");
    EXPECT_NEAR(transformed(*convert, {6378237, 0, 0.0}).z.value_or(-1), 100, kMetres);
    EXPECT_EQ(convert->transform({6378237, 0, std::nullopt}).point.error().message,
              "a geocentric point has three coordinates");
}

TEST_F(TransformedHeight, Geoid_ChangesOnlyTheHeight)
{
    const auto shift = geoidTransformer(L"EPSG:4979", L"EPSG:9707", L"EPSG:10084");
    if (!shift)
        GTEST_SKIP() << "the grid of EPSG:10084 is not installed";
    const CoordinatePoint point = transformed(*shift, {49, 2, 100.0});
    expectNear(point, 49, 2, kDegrees);
    EXPECT_NEAR(point.z.value_or(0), 55.36, 0.01); // the geoid lies 44.64 m above the ellipsoid there
    expectNear(transformed(*shift, {49, 2, std::nullopt}), 49, 2, kDegrees);
}

TEST_F(TransformedHeight, ReversibleGeoid_IsAppliedInReverse)
{
    const auto there = geoidTransformer(L"EPSG:4979", L"EPSG:9707", L"EPSG:9708");
    const auto back = geoidTransformer(L"EPSG:9707", L"EPSG:4979", L"EPSG:9708");
    if (!there || !back)
        GTEST_SKIP() << "the grid of EPSG:9708 is not installed";
    const CoordinatePoint point{49, 2, 100.0};
    expectNear(transformed(*back, transformed(*there, point)), point, kDegrees);
}

TEST_F(TransformedHeight, Geoid_IsCombinedWithAGeocentricConversion)
{
    const auto shift = geoidTransformer(L"EPSG:4978", L"EPSG:9707", L"EPSG:10084");
    if (!shift)
        GTEST_SKIP() << "the grid of EPSG:10084 is not installed";
    const auto toGeocentric = transformer(L"EPSG:4979", L"EPSG:4978");
    const CoordinatePoint point = transformed(*shift, transformed(*toGeocentric, {49, 2, 100.0}));
    expectNear(point, 49, 2, kDegrees);
    EXPECT_NEAR(point.z.value_or(0), 55.36, 0.01);
}

} // namespace
