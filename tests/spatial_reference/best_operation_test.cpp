// Points through what PROJ finds best when nothing is configured.
#include <cmath>

#include "coordinate_transformer_test.h"

namespace {

using namespace Tests;
using Embedded::CoordinatePoint;
using Embedded::RefusalReason;

using BestOperation = CoordinateTransformerTest;

TEST_F(BestOperation, ADirectOneIsToldWithItsCode)
{
    const auto best = transformer(L"EPSG:4807", L"EPSG:4326");
    EXPECT_EQ(best->operation().code, L"EPSG:8094");
    EXPECT_EQ(best->operation().accuracyInMetres, 2.0);
    EXPECT_FALSE(best->operation().isBallpark);
}

TEST_F(BestOperation, ACompositionIsToldByItsName)
{
    const auto best = transformer(L"EPSG:4258", L"EPSG:25832");
    EXPECT_EQ(best->operation().name, L"UTM zone 32N");
    EXPECT_EQ(best->operation().accuracyInMetres, 0.0);
    expectNear(transformed(*best, {0, 9, std::nullopt}), 500000, 0, kMetres);
}

TEST_F(BestOperation, AProjectionAloneIsExact)
{
    const auto best = transformer(L"EPSG:25832", L"EPSG:25833");
    EXPECT_EQ(best->operation().accuracyInMetres, 0.0);
    EXPECT_FALSE(best->operation().isBallpark);
}

TEST_F(BestOperation, ASystemAndItself_AreOneAndTheSame)
{
    const auto same = transformer(L"EPSG:25832", L"EPSG:25832");
    expectNear(transformed(*same, {500000, 5700000, 7.0}), {500000, 5700000, 7.0}, kMetres);
}

TEST_F(BestOperation, DatumsTakenForEqual_AreToldAsBallpark)
{
    const auto best = transformer(L"EPSG:4230", L"EPSG:4283"); // Europe and Australia
    EXPECT_TRUE(best->operation().isBallpark);
}

TEST_F(BestOperation, ItsNeedOfAnInstalledGridIsMet)
{
    const auto best = transformer(L"EPSG:4267", L"EPSG:4269");
    EXPECT_TRUE(best->transform({40, -100, std::nullopt}).point.has_value());
}

TEST_F(BestOperation, APointOutsideOfTheDomain_FailsAloneAndTheNextSucceeds)
{
    const auto best = transformer(L"EPSG:4326", L"EPSG:25832");
    const auto outside = best->transform({95, 9, std::nullopt});
    EXPECT_FALSE(outside.point.has_value());
    EXPECT_FALSE(outside.failure.empty());
    EXPECT_TRUE(best->transform({50, 9, std::nullopt}).point.has_value());
}

TEST_F(BestOperation, APointThatIsNotFinite_Fails)
{
    const auto best = transformer(L"EPSG:4326", L"EPSG:25832");
    for (const double wrong : {HUGE_VAL, -HUGE_VAL, std::nan("")}) {
        EXPECT_FALSE(best->transform({wrong, 9, std::nullopt}).point.has_value());
        EXPECT_FALSE(best->transform({50, wrong, std::nullopt}).point.has_value());
        EXPECT_FALSE(best->transform({50, 9, wrong}).point.has_value());
    }
}

TEST_F(BestOperation, UnitsAreThoseOfTheTargetsAxes)
{
    const auto degrees = transformer(L"EPSG:25832", L"EPSG:4326");
    EXPECT_TRUE(degrees->targetUnits().at(0).isAngular);
    EXPECT_NEAR(degrees->targetUnits().at(1).toBaseUnit, 0.017453292519943295, 1e-15);
    EXPECT_FALSE(degrees->targetUnits().at(2).isAngular);
    const auto feet = transformer(L"EPSG:4269", L"EPSG:2263");
    EXPECT_FALSE(feet->targetUnits().at(0).isAngular);
    EXPECT_NEAR(feet->targetUnits().at(0).toBaseUnit, 0.3048006096012192, 1e-15);
}

TEST_F(BestOperation, UnknownSystemsAndPlanesAreRefused)
{
    EXPECT_EQ(refusal(L"EPSG:1", L"EPSG:4326", std::nullopt).reason, RefusalReason::unknownSystem);
    EXPECT_EQ(refusal(L"EPSG:4326", L"LOCAL:FOOT", std::nullopt).reason, RefusalReason::notEarthReferenced);
}

TEST_F(BestOperation, SystemsOfTwoPlanets_AreRefused)
{
    EXPECT_EQ(refusal(L"EPSG:4326", L"ESRI:104905", std::nullopt).reason, RefusalReason::noOperation); // Mars
}

} // namespace
