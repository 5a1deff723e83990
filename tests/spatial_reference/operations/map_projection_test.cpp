#include "embedded/spatial_reference/operations/map_projection.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

namespace Tests {
namespace {

using Embedded::MapPoint;
using Embedded::MapProjection;

TEST(MapProjection, ProjectsAndUnprojects)
{
    const auto projection = MapProjection::create("+proj=laea +lat_0=40 +lon_0=-100 +R=6371000");
    ASSERT_TRUE(projection.has_value());
    const std::vector<MapPoint> places{{-100, 40}, {-90, 40}, {30, -20}};
    std::vector<MapPoint> points = places;
    projection->project(points);
    EXPECT_NEAR(std::hypot(points[0].x, points[0].y), 0, 1e-6);
    const double angle = 2 * std::asin(std::cos(40 * std::numbers::pi / 180) * std::sin(5 * std::numbers::pi / 180));
    EXPECT_NEAR(std::hypot(points[1].x, points[1].y), 2 * 6371000 * std::sin(angle / 2), 1e-3);
    projection->unproject(points);
    for (std::size_t index = 0; index < places.size(); ++index) {
        EXPECT_NEAR(points[index].x, places[index].x, 1e-9);
        EXPECT_NEAR(points[index].y, places[index].y, 1e-9);
    }
}

TEST(MapProjection, WhatCannotBeShown_IsNotANumberAndSpoilsNothingElse)
{
    const auto projection = MapProjection::create("+proj=ortho +lat_0=0 +lon_0=0 +R=6371000");
    ASSERT_TRUE(projection.has_value());
    std::vector<MapPoint> points{{0, 0}, {180, 0}, {0, 90}};
    projection->project(points);
    EXPECT_NEAR(points[0].x, 0, 1e-6);
    EXPECT_TRUE(std::isnan(points[1].x) && std::isnan(points[1].y));
    EXPECT_NEAR(points[2].y, 6371000, 1e-3);
    std::vector<MapPoint> none;
    projection->project(none);
    projection->unproject(none);
}

TEST(MapProjection, UnknownProjection_IsNamed)
{
    const auto projection = MapProjection::create("+proj=nonsense");
    ASSERT_FALSE(projection.has_value());
    EXPECT_EQ(projection.error().place, "+proj=nonsense");
    EXPECT_NE(projection.error().message, "");
}

} // namespace
} // namespace Tests
