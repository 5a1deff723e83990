// Places and distances of all operations between two systems.
#include "embedded/spatial_reference/operations/candidate_operations.h"

#include <algorithm>
#include <cmath>
#include <ctime>
#include <iostream>

#include "spatial_reference/spatial_reference_test.h"

namespace {

using namespace Tests;
using Embedded::CandidateOperations;
using Embedded::GeographicPoint;

class CandidateOperationsBetween : public SpatialReferenceTest {
protected:
    static std::unique_ptr<CandidateOperations> between(const wchar_t* source, const wchar_t* target)
    {
        auto found = Embedded::findCandidateOperations(source, target);
        if (!found)
            throw std::runtime_error(found.error().text());
        return *std::move(found);
    }
    static std::size_t indexOf(const CandidateOperations& candidates, const std::wstring& code)
    {
        const auto found = std::ranges::find(candidates.operations(), code, &Embedded::CatalogOperation::code);
        EXPECT_NE(found, candidates.operations().end());
        return static_cast<std::size_t>(found - candidates.operations().begin());
    }
    static GeographicPoint position(CandidateOperations& candidates, std::size_t operation, GeographicPoint point)
    {
        const auto positions = candidates.positions(operation, std::span(&point, 1));
        EXPECT_TRUE(positions);
        return positions ? positions->front() : GeographicPoint();
    }
};

TEST_F(CandidateOperationsBetween, CatalogsOperations_StandAsTheirListHasThem_BeforeThoseWithoutCode)
{
    const auto listed = Embedded::operationsBetween(L"EPSG:4230", L"EPSG:4326");
    const auto candidates = between(L"EPSG:4230", L"EPSG:4326");
    ASSERT_TRUE(listed);
    ASSERT_GT(candidates->operations().size(), listed->size());
    for (std::size_t index = 0; index < candidates->operations().size(); ++index) {
        const auto& operation = candidates->operations()[index];
        EXPECT_EQ(operation.code, index < listed->size() ? (*listed)[index].code : L"");
        EXPECT_EQ(operation.isBallpark, index >= listed->size());
    }
}

TEST_F(CandidateOperationsBetween, AreasOfUse_AreThoseOfTheSystemsThemselves)
{
    const auto candidates = between(L"EPSG:23031", L"EPSG:2154");
    EXPECT_EQ(candidates->sourceArea()->east, 6.01);
    EXPECT_EQ(candidates->targetArea()->east, 10.38);
    EXPECT_FALSE(candidates->leavesHeightsOut());
    EXPECT_TRUE(between(L"EPSG:7415", L"EPSG:4326")->leavesHeightsOut());
}

TEST_F(CandidateOperationsBetween, PointOfAProjectedOrGeocentricSystem_IsOnItsGeographicOne)
{
    constexpr GeographicPoint kPoint{48.85, 2.35};
    const auto geographic = between(L"EPSG:4230", L"EPSG:4326");
    const GeographicPoint expected = position(*geographic, indexOf(*geographic, L"EPSG:1275"), kPoint);
    EXPECT_GT(std::abs(expected.latitude - kPoint.latitude), 1e-4);
    for (const auto& [source, target] : {std::pair(L"EPSG:23031", L"EPSG:32631"), std::pair(L"EPSG:4230", L"EPSG:4978"),
                                         std::pair(L"EPSG:4230", L"EPSG:4979")}) {
        const auto candidates = between(source, target);
        const GeographicPoint found = position(*candidates, indexOf(*candidates, L"EPSG:1275"), kPoint);
        EXPECT_NEAR(found.latitude, expected.latitude, 1e-11);
        EXPECT_NEAR(found.longitude, expected.longitude, 1e-11);
    }
}

TEST_F(CandidateOperationsBetween, AnotherMeridianAndUnit_LeaveDegreesFromGreenwich)
{
    constexpr GeographicPoint kPoint{48.85, 2.35};
    const auto greenwich = between(L"EPSG:4275", L"EPSG:4326"); // NTF
    const auto paris = between(L"EPSG:4807", L"EPSG:4326");     // NTF (Paris), in grads
    const GeographicPoint expected = position(*greenwich, indexOf(*greenwich, L"EPSG:1193"), kPoint);
    const GeographicPoint found = position(*paris, indexOf(*paris, L"EPSG:8094"), kPoint); // the path through it
    EXPECT_NEAR(found.latitude, expected.latitude, 1e-9);
    EXPECT_NEAR(found.longitude, expected.longitude, 1e-7); // its angle of Paris has three decimals of a second
    const auto toParis = between(L"EPSG:4326", L"EPSG:4807");
    const GeographicPoint back = position(*toParis, indexOf(*toParis, L"EPSG:8094"), found);
    EXPECT_NEAR(back.latitude, kPoint.latitude, 1e-7);
    EXPECT_NEAR(back.longitude, kPoint.longitude, 1e-7);
}

TEST_F(CandidateOperationsBetween, Distances_AreGeodesicsOnTheEllipsoidOfTheTarget)
{
    const std::vector<GeographicPoint> from = {{0, 0}, {0, 179}, {std::nan(""), 0}};
    const std::vector<GeographicPoint> to = {{0, 1}, {0, -180}, {0, 0}};
    const std::vector<double> onWgs84 = between(L"EPSG:4230", L"EPSG:4326")->distances(from, to);
    ASSERT_EQ(onWgs84.size(), 3U);
    EXPECT_NEAR(onWgs84[0], 6378137 * std::acos(-1.0) / 180, 1e-6);
    EXPECT_NEAR(onWgs84[1], onWgs84[0], 1e-6);
    EXPECT_TRUE(std::isnan(onWgs84[2]));
    const std::vector<double> onInternational = between(L"EPSG:4326", L"EPSG:4230")->distances(from, to);
    EXPECT_NEAR(onInternational[0], 6378388 * std::acos(-1.0) / 180, 1e-6);
}

TEST_F(CandidateOperationsBetween, OperationThatCannotBeUsed_SaysWhy)
{
    const auto candidates = between(L"EPSG:9707", L"EPSG:4979"); // a geoid model that is defined in the other direction
    const auto positions = candidates->positions(indexOf(*candidates, L"EPSG:10084"), {});
    ASSERT_FALSE(positions);
    EXPECT_EQ(Embedded::operationErrorOf(positions.error()), Embedded::OperationError::notReversible);
}

TEST_F(CandidateOperationsBetween, FortyThousandPoints_ThroughTwoCandidates_InTwoSeconds)
{
    constexpr int kSide = 200;
    std::vector<GeographicPoint> points;
    for (int row = 0; row < kSide; ++row)
        for (int column = 0; column < kSide; ++column)
            points.push_back({36 + row * 0.1, -8 + column * 0.1});
    const auto candidates = between(L"EPSG:4230", L"EPSG:4326");
    const std::clock_t start = std::clock(); // processor time, as other tests run beside this one
    const auto from = candidates->positions(indexOf(*candidates, L"EPSG:1133"), points);
    const auto to = candidates->positions(indexOf(*candidates, L"EPSG:1275"), points);
    ASSERT_TRUE(from && to);
    const std::vector<double> distances = candidates->distances(*from, *to);
    const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    EXPECT_EQ(distances.size(), points.size());
    EXPECT_TRUE(std::ranges::all_of(distances, [](double metres) { return metres > 0 && metres < 30; }));
    EXPECT_LT(seconds, 2);
    std::cout << "40,000 points through two candidates: " << seconds << " s\n";
}

} // namespace
