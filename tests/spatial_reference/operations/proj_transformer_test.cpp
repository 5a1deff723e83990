// Transforms points with the operations that PROJ chooses when no transformation is configured.
#include <cmath>

#include "spatial_reference/operations/coordinate_transformer_test.h"

namespace {

using namespace Tests;
using Embedded::CoordinatePoint;
using Embedded::OperationDirection;
using Embedded::OperationError;

using ProjChoice = CoordinateTransformerTest;

TEST_F(ProjChoice, DirectOperation_HasItsCode)
{
    const auto chosen = transformer(L"EPSG:4807", L"EPSG:4326");
    EXPECT_EQ(chosen->operations().front().code, L"EPSG:8094");
    EXPECT_EQ(chosen->operations().front().accuracyInMetres, 2.0);
    EXPECT_FALSE(chosen->operations().front().isBallpark);
}

TEST_F(ProjChoice, Projection_HasItsName)
{
    const auto chosen = transformer(L"EPSG:4258", L"EPSG:25832");
    EXPECT_EQ(chosen->operations().front().name, L"UTM zone 32N");
    EXPECT_EQ(chosen->operations().front().accuracyInMetres, 0.0);
    expectNear(transformed(*chosen, {0, 9, std::nullopt}), 500000, 0, kMetres);
}

TEST_F(ProjChoice, OneCatalogOperationBetweenProjections_HasItsCode)
{
    const auto chosen = transformer(L"EPSG:25832", L"EPSG:32632");
    EXPECT_EQ(chosen->operations().front().code, L"EPSG:1149");
    EXPECT_EQ(chosen->operations().front().direction, OperationDirection::forward);
    const auto back = transformer(L"EPSG:32632", L"EPSG:25832");
    EXPECT_EQ(back->operations().front().code, L"EPSG:1149");
    EXPECT_EQ(back->operations().front().direction, OperationDirection::inverse);
}

TEST_F(ProjChoice, SeveralCatalogOperations_HaveANameButNoCode)
{
    const auto chosen = transformer(L"EPSG:4267", L"EPSG:4269");
    const auto result = chosen->transform({60, -100}); // by way of WGS 84
    EXPECT_EQ(chosen->operations().at(result.operation).code, L"");
    EXPECT_NE(chosen->operations().at(result.operation).name.find(L" + "), std::wstring::npos);
}

TEST_F(ProjChoice, ChangeOfProjection_IsExact)
{
    const auto chosen = transformer(L"EPSG:25832", L"EPSG:25833");
    EXPECT_EQ(chosen->operations().front().accuracyInMetres, 0.0);
    EXPECT_FALSE(chosen->operations().front().isBallpark);
}

TEST_F(ProjChoice, TransformationToTheSameSystem_ChangesNothing)
{
    const auto same = transformer(L"EPSG:25832", L"EPSG:25832");
    expectNear(transformed(*same, {500000, 5700000, 7.0}), {500000, 5700000, 7.0}, kMetres);
}

TEST_F(ProjChoice, OperationThatIgnoresTheDatums_IsBallpark)
{
    const auto chosen = transformer(L"EPSG:4230", L"EPSG:4283"); // Europe and Australia
    EXPECT_TRUE(chosen->operations().front().isBallpark);
}

TEST_F(ProjChoice, EachPoint_UsesTheOperationOfItsArea)
{
    const auto chosen = transformer(L"EPSG:4267", L"EPSG:4269"); // NAD27 and NAD83
    EXPECT_TRUE(chosen->choosesForEachPoint());
    EXPECT_TRUE(chosen->operations().empty());
    const auto inKansas = chosen->transform({40, -100});
    const auto inCanada = chosen->transform({60, -100});
    const auto inKansasAgain = chosen->transform({40, -100});
    ASSERT_EQ(chosen->operations().size(), 2U);
    EXPECT_EQ(inKansas.operation, 0U);
    EXPECT_EQ(inCanada.operation, 1U);
    EXPECT_EQ(inKansasAgain.operation, 0U);
    EXPECT_NE(chosen->operations()[0].name, chosen->operations()[1].name);
    for (const auto& operation : chosen->operations()) {
        EXPECT_FALSE(operation.isBallpark);
        EXPECT_GT(operation.accuracyInMetres.value_or(0), 0);
    }
}

TEST_F(ProjChoice, PointOutsideAllAreas_UsesABallparkOperation)
{
    const auto chosen = transformer(L"EPSG:4267", L"EPSG:4269");
    const auto inTheGulfOfGuinea = chosen->transform({0, 0});
    expectNear(inTheGulfOfGuinea.point.value_or(CoordinatePoint{9, 9}), 0, 0, kDegrees);
    EXPECT_TRUE(chosen->operations().at(inTheGulfOfGuinea.operation).isBallpark);
    EXPECT_FALSE(chosen->operations().at(chosen->transform({40, -100}).operation).isBallpark);
}

TEST_F(ProjChoice, PointInsideAnArea_UsesARealOperation)
{
    struct Case {
        const wchar_t* source;
        const wchar_t* target;
        CoordinatePoint point;
    };
    for (const Case& each :
         {Case{L"EPSG:4301", L"EPSG:6668", {35.68, 139.77}}, Case{L"EPSG:4267", L"EPSG:4269", {40, -100}},
          Case{L"EPSG:4135", L"EPSG:4152", {21.3, -157.9}}}) {
        const auto chosen = transformer(each.source, each.target);
        const auto result = chosen->transform(each.point);
        ASSERT_TRUE(result.point.has_value());
        EXPECT_FALSE(chosen->operations().at(result.operation).isBallpark);
        EXPECT_GT(std::abs(result.point->x - each.point.x) + std::abs(result.point->y - each.point.y), 1e-4);
    }
}

TEST_F(ProjChoice, TimeDependentOperation_UsesTheEpochOfThePoint)
{
    const auto chosen = transformer(L"EPSG:9000", L"EPSG:7844"); // ITRF2014 and GDA2020, a plate that moves
    EXPECT_TRUE(chosen->operations().front().isTimeDependent);
    const CoordinatePoint without = transformed(*chosen, {-30, 130});
    const CoordinatePoint atItsEpoch = transformed(*chosen, {-30, 130, std::nullopt, 2020.0});
    const CoordinatePoint later = transformed(*chosen, {-30, 130, std::nullopt, 2030.0});
    expectNear(without, atItsEpoch, kDegrees);
    EXPECT_GT(std::abs(later.x - without.x), 1e-6); // some 6 cm a year
    EXPECT_FALSE(transformer(L"EPSG:4807", L"EPSG:4326")->operations().front().isTimeDependent);
}

TEST_F(ProjChoice, MissingBetterGrid_IsNamedForPointsInItsArea)
{
    const auto chosen = transformer(L"EPSG:4267", L"EPSG:4269");
    EXPECT_TRUE(chosen->findMissingGrids({0, 0}, chosen->transform({0, 0}).operation));
    EXPECT_TRUE(chosen->missingGrids().empty());
    const auto inKansas = chosen->transform({40, -100});
    if (chosen->operations().at(inKansas.operation).accuracyInMetres < 1.0)
        GTEST_SKIP() << "the grid is installed";
    for (int times = 0; times < 2; ++times)
        EXPECT_TRUE(chosen->findMissingGrids({40, -100}, inKansas.operation));
    ASSERT_EQ(chosen->missingGrids().size(), 1U);
    EXPECT_EQ(chosen->missingGrids()[0].grid.name, L"us_noaa_conus.tif");
    EXPECT_EQ(chosen->missingGrids()[0].operation.code, L"EPSG:1241");
    EXPECT_EQ(chosen->missingGrids()[0].operation.accuracyInMetres, 0.15);
}

TEST_F(ProjChoice, PointOutsideTheDomain_FailsAloneAndTheNextSucceeds)
{
    const auto chosen = transformer(L"EPSG:4326", L"EPSG:25832");
    const auto outside = chosen->transform({95, 9, std::nullopt});
    EXPECT_FALSE(outside.point.has_value());
    EXPECT_NE(outside.point.error().message, "");
    EXPECT_TRUE(chosen->transform({50, 9, std::nullopt}).point.has_value());
}

TEST_F(ProjChoice, NonFinitePoint_Fails)
{
    const auto chosen = transformer(L"EPSG:4326", L"EPSG:25832");
    for (const double wrong : {HUGE_VAL, -HUGE_VAL, std::nan("")}) {
        EXPECT_FALSE(chosen->transform({wrong, 9, std::nullopt}).point.has_value());
        EXPECT_FALSE(chosen->transform({50, wrong, std::nullopt}).point.has_value());
        EXPECT_FALSE(chosen->transform({50, 9, wrong}).point.has_value());
        EXPECT_FALSE(chosen->transform({50, 9, std::nullopt, wrong}).point.has_value());
    }
}

TEST_F(ProjChoice, Units_AreThoseOfTheTargetsAxes)
{
    const auto degrees = transformer(L"EPSG:25832", L"EPSG:4326");
    EXPECT_TRUE(degrees->targetAxes().units.at(0).isAngular);
    EXPECT_NEAR(degrees->targetAxes().units.at(1).toBaseUnit, 0.017453292519943295, 1e-15);
    EXPECT_FALSE(degrees->targetAxes().units.at(2).isAngular);
    const auto feet = transformer(L"EPSG:4269", L"EPSG:2263");
    EXPECT_FALSE(feet->targetAxes().units.at(0).isAngular);
    EXPECT_NEAR(feet->targetAxes().units.at(0).toBaseUnit, 0.3048006096012192, 1e-15);
}

TEST_F(ProjChoice, Axes_HaveDirectionsAndTheOrderForDisplay)
{
    using Embedded::AxisDirection;
    const auto expectAxes = [](const wchar_t* code, AxisDirection first, AxisDirection second, bool isNorthingFirst) {
        const auto made = transformer(code, L"EPSG:4326");
        const Embedded::SystemAxes& axes = made->sourceAxes();
        EXPECT_EQ(axes.units.at(0).direction, first) << Embedded::utf8FromWide(code);
        EXPECT_EQ(axes.units.at(1).direction, second) << Embedded::utf8FromWide(code);
        EXPECT_EQ(axes.isNorthingFirst, isNorthingFirst) << Embedded::utf8FromWide(code);
    };
    expectAxes(L"EPSG:4326", AxisDirection::north, AxisDirection::east, true);
    expectAxes(L"OGC:CRS84", AxisDirection::east, AxisDirection::north, false);
    expectAxes(L"EPSG:25832", AxisDirection::east, AxisDirection::north, false);
    expectAxes(L"EPSG:2193", AxisDirection::north, AxisDirection::east, true);
    expectAxes(L"EPSG:2053", AxisDirection::west, AxisDirection::south, false);
    expectAxes(L"EPSG:32661", AxisDirection::south, AxisDirection::south, true); // from the pole, along two meridians
    expectAxes(L"EPSG:3413", AxisDirection::south, AxisDirection::south, false);
    expectAxes(L"EPSG:4978", AxisDirection::other, AxisDirection::other, false);
    expectAxes(L"EPSG:9707", AxisDirection::north, AxisDirection::east, true); // with heights of another system
}

TEST_F(ProjChoice, PointThatFails_SaysWhyInPlainWords)
{
    const auto chosen = transformer(L"EPSG:4258", L"EPSG:25832");
    EXPECT_EQ(chosen->transform({95, 9}).point.error().message,
              "not a place on the Earth, such as a latitude beyond 90 degrees");
    EXPECT_EQ(chosen->transform({0, 99}).point.error().message,
              "outside of the area where the projection can be calculated");
}

TEST_F(ProjChoice, UnknownSystemAndLocalPlane_AreRefused)
{
    EXPECT_EQ(kindOfError(L"EPSG:1", L"EPSG:4326", std::nullopt), OperationError::unknownSystem);
    EXPECT_EQ(kindOfError(L"EPSG:4326", L"LOCAL:FOOT", std::nullopt), OperationError::notEarthReferenced);
}

TEST_F(ProjChoice, SystemsOfTwoPlanets_AreRefused)
{
    EXPECT_EQ(kindOfError(L"EPSG:4326", L"ESRI:104905", std::nullopt), OperationError::noOperation); // Mars
}

} // namespace
