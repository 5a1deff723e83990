// Where maps show places, and that they show land as land, whatever their projection.
#include "orvelcs/output/map/map_view.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "orvelcs/output/map/coastlines.h"
#include "orvelcs/output/map/sphere.h"

namespace Tests {
namespace {

using Orvelcs::GeographicBounds;
using Orvelcs::MapPoint;
using Orvelcs::MapView;
using Orvelcs::PlaneLine;

constexpr Orvelcs::PageBox kRoom{50, 80, 900, 700};
constexpr GeographicBounds kFiji{.west = 176.81, .south = -20.81, .east = -178.15, .north = -12.42};
constexpr GeographicBounds kAntarctica{.west = -180, .south = -90, .east = 180, .north = -60};

struct Extent {
    const char* name;
    GeographicBounds bounds;
    std::string projection;
};

const std::vector<Extent>& extents()
{
    static const std::vector<Extent> all{
        {"the world", {-180, -90, 180, 90}, "eqearth"},
        {"the Pacific", {98, -60, -68, 67}, "eqearth"},
        {"the north polar region", {-180, 60, 180, 90}, "laea"},
        {"Antarctica", kAntarctica, "laea"},
        {"the northern hemisphere", {-180, 0, 180, 90}, "laea"},
        {"the southern hemisphere", {-180, -90, 180, 0}, "laea"},
        {"Europe", {-36, 24, 45, 85}, "laea"},
        {"Africa", {-18, -35, 52, 38}, "laea"},
        {"Russia", {19, 41, -169, 82}, "laea"},
        {"a zone from the equator to the north", {6, 0, 12, 84}, "laea"},
        {"New Zealand and Fiji", {166, -48, -178, -12}, "aea"},
        {"the United States", {-125, 24, -66, 49}, "aea"},
        {"Fiji", kFiji, "lcc"},
        {"Spain", {-9.5, 36, 3.5, 44}, "lcc"},
        {"Kenya", {33.9, -4.7, 41.9, 4.7}, "laea"},
    };
    return all;
}

/// Latitudes and longitudes.
const std::vector<MapPoint> kLand{{10, 23},     {-60, -5},  {110, 65},    {134, -25}, {45, -89.9},
                                  {0, -80},     {-40, 72},  {-98, 38},    {-4, 40},   {-176, 67},
                                  {170.5, -44}, {38, 0.5},  {178, -17.8}, {25, -30},  {100, 75.5},
                                  {15.5, 63},   {-150, 65}, {179, 67.5},  {-90, -85}, {10, 50}};
const std::vector<MapPoint> kSea{{-30, 0},    {-150, 30}, {90, -40}, {0, 85},    {0, 90},    {-150, -60}, {50.5, 42},
                                 {34, 43},    {-86, 60},  {180, 0},  {179, -55}, {-180, 30}, {5, 40},     {-75, 30},
                                 {-178, -19}, {172, -35}, {3, 56},   {-10, -65}, {-35, 35},  {45, -2}};

bool isInside(const PlaneLine& ring, const MapPoint& point)
{
    bool inside = false;
    for (std::size_t index = 0; index < ring.size(); ++index) {
        const MapPoint& from = ring[index];
        const MapPoint& to = ring[index + 1 < ring.size() ? index + 1 : 0];
        if ((from.y > point.y) != (to.y > point.y) &&
            point.x < from.x + (to.x - from.x) * (point.y - from.y) / (to.y - from.y))
            inside = !inside;
    }
    return inside;
}

bool isFilled(const std::vector<PlaneLine>& rings, const MapPoint& point)
{
    return std::ranges::count_if(rings, [&](const PlaneLine& ring) { return isInside(ring, point); }) % 2 == 1;
}

std::vector<PlaneLine> landOf(const MapView& view, Orvelcs::CoastlineScale scale)
{
    std::vector<PlaneLine> seen;
    for (const PlaneLine& ring : Orvelcs::landRings(scale))
        std::ranges::move(view.areas(ring), std::back_inserter(seen));
    return seen;
}

/// Expects that those of the places that are seen are filled or not. Returns how many are seen.
int expectFilled(const MapView& view, const std::vector<PlaneLine>& rings, const std::vector<MapPoint>& places,
                 bool expected)
{
    int seen = 0;
    for (const MapPoint& place : places)
        if (const auto point = view.at(place.y, place.x)) {
            ++seen;
            EXPECT_EQ(isFilled(rings, *point), expected) << place.y << " " << place.x;
        }
    return seen;
}

TEST(MapView, LandIsFilledAndSeaIsNot_OnEveryKindOfMap)
{
    for (const Extent& extent : extents()) {
        SCOPED_TRACE(extent.name);
        const MapView view(extent.bounds, kRoom);
        for (const auto scale : {Orvelcs::CoastlineScale::small, Orvelcs::CoastlineScale::medium}) {
            if (scale == Orvelcs::CoastlineScale::small && view.projection().radius < 5)
                continue; // which lacks the islands
            const std::vector<PlaneLine> land = landOf(view, scale);
            const int places = expectFilled(view, land, kLand, true) + expectFilled(view, land, kSea, false);
            EXPECT_GE(places, 2);
        }
    }
}

TEST(MapView, ProjectionFollowsTheExtent)
{
    for (const Extent& extent : extents())
        EXPECT_EQ(MapView(extent.bounds, kRoom).projection().definition.find("+proj=" + extent.projection + " "), 0U)
            << extent.name << ": " << MapView(extent.bounds, kRoom).projection().definition;
}

TEST(MapView, ShowsAllOfTheExtent)
{
    for (const Extent& extent : extents()) {
        SCOPED_TRACE(extent.name);
        const MapView view(extent.bounds, kRoom);
        const double span = extent.bounds.longitudinalExtent();
        for (int step = 0; step <= 20; ++step)
            for (const double latitude : {extent.bounds.south, extent.bounds.north})
                EXPECT_TRUE(view.sees(latitude, extent.bounds.west + span * step / 20)) << latitude << " " << step;
    }
}

TEST(MapView, PointOfThePage_IsThePlaceThatIsShownThere)
{
    for (const Extent& extent : extents()) {
        SCOPED_TRACE(extent.name);
        const MapView view(extent.bounds, kRoom);
        const MapPoint middle = Orvelcs::middleOf(extent.bounds);
        const auto point = view.at(middle.y + 1, middle.x + 1);
        ASSERT_TRUE(point.has_value());
        const auto place = view.placeAtPoint(*point);
        ASSERT_TRUE(place.has_value());
        EXPECT_NEAR(place->y, middle.y + 1, 1e-6);
        EXPECT_NEAR(std::remainder(place->x - middle.x - 1, 360), 0, 1e-6);
    }
}

TEST(MapView, NothingIsDrawnOutsideOfTheFrame)
{
    for (const Extent& extent : extents()) {
        const MapView view(extent.bounds, kRoom);
        const Orvelcs::PageBox& frame = view.frame();
        const Orvelcs::PlaneRectangle room{frame.x, frame.y, frame.right(), frame.bottom()};
        std::vector<PlaneLine> drawn = landOf(view, Orvelcs::CoastlineScale::small);
        std::ranges::move(view.lines({{-400, 20}, {400, 20}}), std::back_inserter(drawn));
        std::ranges::move(view.outline(extent.bounds), std::back_inserter(drawn));
        for (const PlaneLine& line : drawn)
            for (const MapPoint& point : line)
                ASSERT_TRUE(room.grownBy(1e-6, 1e-6).contains(point))
                    << extent.name << " " << point.x << " " << point.y;
    }
}

TEST(MapView, AreaAcrossTheAntimeridian_IsOneRingOnItsOwnMap)
{
    const MapView view(kFiji, kRoom);
    EXPECT_NEAR(view.projection().centre.x, 179.33, 0.01);
    EXPECT_EQ(view.areas(Orvelcs::ringOf(kFiji)).size(), 1U);
    EXPECT_EQ(view.outline(kFiji).size(), 1U);
    EXPECT_FALSE(isFilled(view.areas(Orvelcs::ringOf(kFiji)), *view.at(-17, 176)));
    for (const double longitude : {178.0, 180.0, -180.0, -179.0})
        EXPECT_TRUE(isFilled(view.areas(Orvelcs::ringOf(kFiji)), *view.at(-17, longitude))) << longitude;
}

TEST(MapView, AreaAcrossTheEdgeOfAWorldMap_IsTwoRingsWithoutALineAlongTheEdge)
{
    const MapView view({-180, -90, 180, 90}, kRoom);
    const auto rings = view.areas(Orvelcs::ringOf(kFiji));
    ASSERT_EQ(rings.size(), 2U);
    EXPECT_TRUE(isFilled(rings, *view.at(-17, 178)));
    EXPECT_TRUE(isFilled(rings, *view.at(-17, -179)));
    EXPECT_FALSE(isFilled(rings, *view.at(-17, 0)));
    for (const PlaneLine& line : view.outline(kFiji))
        for (std::size_t index = 1; index < line.size(); ++index)
            EXPECT_FALSE(std::abs(line[index].x - view.at(-17, 180)->x) < 0.5 && line[index - 1].x == line[index].x);
}

TEST(MapView, AreaAroundAPole_IsACircleWithoutMeridians)
{
    const MapView view(kAntarctica, kRoom);
    const MapPoint pole = *view.at(-90, 0);
    const double radius = std::hypot(view.at(-60, 0)->x - pole.x, view.at(-60, 0)->y - pole.y);
    ASSERT_GT(radius, 100);
    for (const PlaneLine& line : view.outline(kAntarctica))
        for (const MapPoint& point : line)
            EXPECT_NEAR(std::hypot(point.x - pole.x, point.y - pole.y), radius, 0.2);
    const auto rings = view.areas(Orvelcs::ringOf(kAntarctica));
    for (int longitude = -179; longitude < 180; longitude += 7) {
        EXPECT_TRUE(isFilled(rings, *view.at(-62, longitude))) << longitude;
        EXPECT_FALSE(isFilled(rings, *view.at(-58, longitude))) << longitude;
    }
}

TEST(MapView, EdgeOfABox_FollowsItsParallel)
{
    const GeographicBounds states{-125, 24, -66, 49};
    const MapView view(states, kRoom);
    const auto outline = view.outline(states);
    ASSERT_EQ(outline.size(), 1U);
    EXPECT_GT(outline.front().size(), 20U);
    const MapPoint middle = *view.at(49, -95.5);
    const MapPoint corner = *view.at(49, -125);
    EXPECT_GT(middle.y - corner.y, 30) << "the parallel of the north sags towards the south";
    const auto nearest = std::ranges::min(
        outline.front(), {}, [&](const MapPoint& point) { return std::hypot(point.x - middle.x, point.y - middle.y); });
    EXPECT_NEAR(nearest.y, middle.y, 1);
}

TEST(MapView, Hemisphere_EndsAtItsHorizon)
{
    const MapView view({-180, 0, 180, 90}, kRoom);
    EXPECT_TRUE(view.showsDisc());
    EXPECT_TRUE(view.sees(-3, 20));
    EXPECT_FALSE(view.sees(-10, 20));
    EXPECT_FALSE(view.placeAtPoint({view.frame().x + 1, view.frame().y + 1}).has_value());
    for (const PlaneLine& line : view.lines({{20, -80}, {20, 80}}))
        for (const MapPoint& point : line)
            EXPECT_GE(view.placeAtPoint(point).value_or(MapPoint{0, 0}).y, -4.1);
}

} // namespace
} // namespace Tests
