// The parts of a map: its extent, its coastlines, its graticule, its labels.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "orvelcs/cli/failure.h"
#include "orvelcs/output/map/area_labels.h"
#include "orvelcs/output/map/coastlines.h"
#include "orvelcs/output/map/graticule.h"
#include "orvelcs/output/map/label_placement.h"
#include "orvelcs/output/map/mapped_system.h"
#include "orvelcs/output/map/scale_bar.h"
#include "orvelcs/output/map/sphere.h"

namespace Tests {
namespace {

using Orvelcs::commonExtent;
using Orvelcs::GeographicBounds;
using Orvelcs::MapPoint;
using Orvelcs::MapView;
using Orvelcs::PageBox;

constexpr PageBox kPartsRoom{50, 80, 900, 700};

void expectBounds(const GeographicBounds& bounds, const GeographicBounds& expected)
{
    EXPECT_DOUBLE_EQ(bounds.west, expected.west);
    EXPECT_DOUBLE_EQ(bounds.south, expected.south);
    EXPECT_DOUBLE_EQ(bounds.east, expected.east);
    EXPECT_DOUBLE_EQ(bounds.north, expected.north);
}

TEST(CommonExtent, IsTheSmallestAreaThatHoldsAll)
{
    expectBounds(commonExtent({{6, 47, 15, 55}}), {6, 47, 15, 55});
    expectBounds(commonExtent({{6, 47, 15, 55}, {-9, 36, 3, 44}}), {-9, 36, 15, 55});
    expectBounds(commonExtent({{166, -48, 179, -34}, {176, -21, -178, -12}}), {166, -48, -178, -12});
    expectBounds(commonExtent({{170, 0, -170, 1}, {-175, 5, -160, 6}, {150, 2, 160, 3}}), {150, 0, -160, 6});
    expectBounds(commonExtent({{-125, 24, -66, 49}, {-180, -90, 180, 90}}), {-180, -90, 180, 90});
    expectBounds(commonExtent({{-180, 0, -60, 1}, {-60, 0, 60, 1}, {60, 0, 180, 1}}), {-180, 0, 180, 1});
    expectBounds(commonExtent({}), Orvelcs::kWholeEarth);
}

TEST(ContainsPlace, KnowsAreasAcrossTheAntimeridian)
{
    const GeographicBounds fiji{176.81, -20.81, -178.15, -12.42};
    for (const double longitude : {176.81, 178.0, 180.0, -180.0, 181.0, -179.0, -178.15})
        EXPECT_TRUE(Orvelcs::containsPlace(fiji, -17, longitude)) << longitude;
    for (const double longitude : {176.0, -178.0, 0.0, 183.0})
        EXPECT_FALSE(Orvelcs::containsPlace(fiji, -17, longitude)) << longitude;
    EXPECT_FALSE(Orvelcs::containsPlace(fiji, -21, 178));
    EXPECT_TRUE(Orvelcs::containsPlace(Orvelcs::kWholeEarth, 90, 180));
}

TEST(AreaLabels, NumberOfAnArea_LiesWhereNoOtherAreaIs)
{
    std::vector<Orvelcs::MappedSystem> systems(2);
    systems[0].bounds = {0, 40, 20, 50};
    systems[1].bounds = {6, 43, 14, 47};
    Orvelcs::numberAreas(systems);
    const MapView view({0, 40, 20, 50}, kPartsRoom);
    const auto labels = Orvelcs::labelAreas(Orvelcs::areasOf(systems), view, {});
    ASSERT_EQ(labels.size(), 2U);
    const auto outer = view.placeAtPoint(labels[0].label.box.middle());
    const auto inner = view.placeAtPoint(labels[1].label.box.middle());
    EXPECT_TRUE(Orvelcs::containsPlace(*systems[0].bounds, outer->y, outer->x));
    EXPECT_FALSE(Orvelcs::containsPlace(*systems[1].bounds, outer->y, outer->x));
    EXPECT_TRUE(Orvelcs::containsPlace(*systems[1].bounds, inner->y, inner->x));
}

TEST(Coastlines, RingsLieOnTheEarthAndCoastsLeaveOutTheCuts)
{
    for (const auto scale : {Orvelcs::CoastlineScale::small, Orvelcs::CoastlineScale::medium}) {
        const auto rings = Orvelcs::landRings(scale);
        EXPECT_GT(rings.size(), 100U);
        std::size_t cuts = 0;
        for (const auto& ring : rings) {
            ASSERT_GE(ring.size(), 3U);
            const auto bounds = Orvelcs::boundsOf(ring);
            ASSERT_TRUE((Orvelcs::PlaneRectangle{-180, -90, 180, 84}.contains({bounds.left, bounds.bottom})));
            ASSERT_TRUE((Orvelcs::PlaneRectangle{-180, -90, 180, 84}.contains({bounds.right, bounds.top})));
            for (const auto& coast : Orvelcs::coastOf(ring))
                for (std::size_t index = 1; index < coast.size(); ++index)
                    ASSERT_FALSE(coast[index].x == coast[index - 1].x && std::abs(coast[index].x) == 180);
            std::size_t edges = 0;
            for (const auto& coast : Orvelcs::coastOf(ring))
                edges += coast.size() - 1;
            cuts += ring.size() - edges;
        }
        EXPECT_GT(cuts, 4U) << "Antarctica and Chukotka are cut";
    }
}

TEST(Sphere, PlaceAtAnAngle_IsThatFarAway)
{
    for (const MapPoint& from : {MapPoint{0, 0}, MapPoint{20, 50}, MapPoint{10, 90}, MapPoint{-170, -90}})
        for (const double azimuth : {-170.0, -90.0, 0.0, 33.0, 120.0})
            for (const double angle : {0.001, 1.0, 60.0, 150.0}) {
                const MapPoint place = Orvelcs::placeAt(from, azimuth, angle);
                EXPECT_NEAR(Orvelcs::angleBetween(from, place), angle, 1e-9) << from.y << " " << azimuth;
                EXPECT_NEAR(std::remainder(Orvelcs::azimuthBetween(from, place) - azimuth, 360), 0, 1e-6);
            }
}

std::vector<std::string> labelsOf(const GeographicBounds& extent)
{
    std::vector<std::string> texts;
    for (const auto& label : Orvelcs::makeGraticule(MapView(extent, kPartsRoom)).labels)
        texts.push_back(label.text);
    std::ranges::sort(texts);
    return texts;
}

TEST(Graticule, LabelsRoundDegrees)
{
    EXPECT_EQ(labelsOf({5.9, 45.8, 10.5, 47.8}),
              (std::vector<std::string>{"0\u00B0", "10\u00B0E", "15\u00B0E", "20\u00B0E", "40\u00B0N", "45\u00B0N",
                                        "50\u00B0N", "5\u00B0E"}));
    const auto world = labelsOf({-180, -90, 180, 90});
    for (const char* text : {"0\u00B0", "60\u00B0S", "30\u00B0N", "150\u00B0W", "120\u00B0E"})
        EXPECT_EQ(std::ranges::count(world, text), text[0] == '0' ? 2 : 1) << text;
    EXPECT_EQ(std::ranges::count(labelsOf({176.8, -20.8, -178.2, -12.4}), "180\u00B0"), 1);
}

TEST(Graticule, NoLabelMeetsAnotherOrLiesOnTheMap)
{
    for (const GeographicBounds& extent :
         {GeographicBounds{-180, -90, 180, 90}, GeographicBounds{6, 38, 12, 84}, GeographicBounds{-36, 24, 45, 85},
          GeographicBounds{-125, 24, -66, 49}, GeographicBounds{-180, -90, 180, -60}}) {
        const MapView view(extent, kPartsRoom);
        const auto labels = Orvelcs::makeGraticule(view).labels;
        EXPECT_GE(labels.size(), 5U);
        for (std::size_t index = 0; index < labels.size(); ++index) {
            for (std::size_t other = 0; other < index; ++other)
                EXPECT_FALSE(labels[index].box.meets(labels[other].box)) << labels[index].text << labels[other].text;
            if (!view.projection().showsWorld) {
                EXPECT_EQ(labels[index].isInside, labels[index].box.meets(view.frame())) << labels[index].text;
            }
        }
    }
}

TEST(ScaleBar, IsThereWhereTheScaleIsNearlyEven)
{
    const MapView switzerland({5.9, 45.8, 10.5, 47.8}, kPartsRoom);
    const auto bar = Orvelcs::makeScaleBar(switzerland);
    ASSERT_TRUE(bar.has_value());
    EXPECT_EQ(bar->text, "200 km");
    const MapPoint middle = switzerland.frame().middle();
    const auto from = switzerland.placeAtPoint(middle);
    const auto to = switzerland.placeAtPoint({middle.x + bar->length, middle.y});
    const double metres =
        Orvelcs::angleBetween(*from, *to) * Embedded::kRadiansPerDegree * Orvelcs::kEarthRadiusInMetres;
    EXPECT_NEAR(metres, 200'000, 2'000);
    EXPECT_FALSE(Orvelcs::makeScaleBar(MapView({-180, -90, 180, 90}, kPartsRoom)).has_value());
    EXPECT_FALSE(Orvelcs::makeScaleBar(MapView({-180, 0, 180, 90}, kPartsRoom)).has_value());
}

TEST(LabelPlacement, LabelsOfOnePlace_LieBesideEachOther)
{
    const PageBox frame{0, 0, 900, 450};
    const std::vector<Orvelcs::WantedLabel> wanted(100, {{890, 5}, {{890, 5}}, 24, 12});
    const auto placed = Orvelcs::placeLabels(wanted, frame, {{860, 0, 30, 30}});
    ASSERT_EQ(placed.size(), 100U);
    for (std::size_t index = 0; index < placed.size(); ++index) {
        EXPECT_TRUE(frame.contains(placed[index].box));
        EXPECT_TRUE(placed[index].needsLeader);
        EXPECT_FALSE(placed[index].box.meets({860, 0, 30, 30}));
        for (std::size_t other = 0; other < index; ++other)
            EXPECT_FALSE(placed[index].box.meets(placed[other].box)) << index << " " << other;
    }
}

TEST(LabelPlacement, LabelWithRoom_LiesOnTheFirstFreePoint)
{
    const auto placed = Orvelcs::placeLabels({{{50, 50}, {{50, 50}}, 20, 10}, {{50, 50}, {{52, 50}, {80, 80}}, 20, 10}},
                                             {0, 0, 100, 100}, {});
    EXPECT_EQ(placed[0].box.middle(), (MapPoint{50, 50}));
    EXPECT_EQ(placed[1].box.middle(), (MapPoint{80, 80}));
    EXPECT_FALSE(placed[1].needsLeader);
}

TEST(LabelPlacement, FrameWithoutRoom_IsRefused)
{
    const std::vector<Orvelcs::WantedLabel> wanted(20, {{50, 50}, {{50, 50}}, 40, 30});
    EXPECT_THROW(static_cast<void>(Orvelcs::placeLabels(wanted, {0, 0, 100, 100}, {})), Orvelcs::Failure);
}

TEST(MappedAreas, SystemsWithEqualAreasShareANumber)
{
    std::vector<Orvelcs::MappedSystem> systems(5);
    systems[0].bounds = {1, 2, 3, 4};
    systems[2].bounds = {1, 2, 3, 5};
    systems[3].bounds = {1, 2, 3, 4};
    systems[3].deprecated = true;
    systems[4].bounds = {5, 5, 6, 6};
    systems[4].deprecated = true;
    Orvelcs::numberAreas(systems);
    EXPECT_EQ(systems[0].number, 1);
    EXPECT_EQ(systems[1].number, std::nullopt);
    EXPECT_EQ(systems[2].number, 2);
    EXPECT_EQ(systems[3].number, 1);
    const auto areas = Orvelcs::areasOf(systems);
    ASSERT_EQ(areas.size(), 3U);
    EXPECT_EQ(areas[0].systems, (std::vector<const Orvelcs::MappedSystem*>{&systems[0], &systems[3]}));
    EXPECT_FALSE(areas[0].isDeprecated());
    EXPECT_TRUE(areas[2].isDeprecated());
}

} // namespace
} // namespace Tests
