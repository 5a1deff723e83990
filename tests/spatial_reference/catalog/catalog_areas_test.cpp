#include "embedded/spatial_reference/catalog/catalog_areas.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "spatial_reference/spatial_reference_test.h"

namespace {

using namespace Tests;
using Embedded::CatalogEntry;
using Embedded::GeographicBounds;

using CatalogAreasOfUse = SpatialReferenceTest;

TEST_F(CatalogAreasOfUse, AreThoseOfProj)
{
    const std::vector<CatalogEntry>& all = Embedded::catalogEntries();
    const auto areas = Embedded::areasOfUse(all);
    ASSERT_TRUE(areas);
    constexpr std::size_t kStep = 100;
    std::size_t withSeveral = 0;
    for (std::size_t index = 0; index < all.size(); ++index) {
        withSeveral += (*areas)[index].size() > 1;
        if ((*areas)[index].size() < 2 && index % kStep != 0)
            continue;
        const auto alone = Embedded::areasOfUse({all[index]});
        ASSERT_TRUE(alone);
        ASSERT_EQ(alone->front().size(), (*areas)[index].size());
        for (std::size_t area = 0; area < alone->front().size(); ++area)
            EXPECT_EQ(alone->front()[area]->name, (*areas)[index][area]->name);
        const auto entry = Embedded::findCatalogEntry(all[index].code);
        ASSERT_TRUE(entry);
        const std::wstring name = (*areas)[index].empty() ? L"" : (*areas)[index].front()->name;
        EXPECT_EQ(name, entry->areaOfUse) << testing::PrintToString(all[index].code);
    }
    EXPECT_GT(withSeveral, 0U);
}

TEST_F(CatalogAreasOfUse, AreInTheOrderOfTheEntries)
{
    std::vector<CatalogEntry> entries(3);
    entries[0].code = L"EPSG:28992";
    entries[1].code = L"EPSG:1"; // there is no such system
    entries[2].code = L"EPSG:3460";
    const auto areas = Embedded::areasOfUse(entries);
    ASSERT_TRUE(areas);
    ASSERT_EQ(areas->size(), 3U);
    EXPECT_EQ((*areas)[0].front()->bounds->east, 7.22);
    EXPECT_TRUE((*areas)[1].empty());
    EXPECT_EQ((*areas)[2].front()->bounds->east, -178.15);
}

struct BoundsCase {
    GeographicBounds area;
    GeographicBounds other;
    bool contains;
};

TEST(GeographicBoundsTest, ContainAcrossTheAntimeridian)
{
    const GeographicBounds fiji{.west = 176, .south = -20, .east = -178, .north = -12};
    const GeographicBounds world{.west = -180, .south = -90, .east = 180, .north = 90};
    const std::vector<BoundsCase> cases{
        {fiji, fiji, true},
        {fiji, {.west = 180, .south = -15, .east = 180, .north = -15}, true},
        {fiji, {.west = -180, .south = -15, .east = -180, .north = -15}, true},
        {fiji, {.west = -178, .south = -15, .east = -178, .north = -15}, true},
        {fiji, {.west = -177, .south = -15, .east = -177, .north = -15}, false},
        {fiji, {.west = 170, .south = -15, .east = 177, .north = -14}, false},
        {fiji, {.west = -179, .south = -15, .east = 179, .north = -14}, false},
        {fiji, {.west = 177, .south = -11, .east = 178, .north = -10}, false},
        {fiji, {.west = 177, .south = -13, .east = 178, .north = -10}, false},
        {fiji, world, false},
        {world, fiji, true},
        {world, world, true},
        {{.west = 0.1, .south = 0, .east = 0.3, .north = 1}, {.west = 0.2, .south = 0, .east = 0.3, .north = 1}, true},
    };
    for (const BoundsCase& tested : cases) {
        EXPECT_EQ(tested.area.contains(tested.other), tested.contains) << tested.other.west << ' ' << tested.other.east;
    }
}

struct CommonCase {
    GeographicBounds left;
    GeographicBounds right;
    std::optional<GeographicBounds> common;
};

TEST(GeographicBoundsTest, CommonPart_IsTheWiderOneOfTwo_AndMayCrossTheAntimeridian)
{
    const GeographicBounds fiji{.west = 176, .south = -20, .east = -178, .north = -12};
    const GeographicBounds world{.west = -180, .south = -90, .east = 180, .north = 90};
    const GeographicBounds pole{.west = -180, .south = 60, .east = 180, .north = 90};
    const GeographicBounds europe{.west = -16, .south = 25, .east = 48, .north = 84};
    const GeographicBounds allButEurope{.west = 40, .south = 0, .east = -10, .north = 90};
    const std::vector<CommonCase> cases{
        {fiji, fiji, fiji},
        {fiji, world, fiji},
        {pole, europe, GeographicBounds{.west = -16, .south = 60, .east = 48, .north = 84}},
        {pole, pole, pole},
        {fiji,
         {.west = 170, .south = -15, .east = 178, .north = 0},
         GeographicBounds{.west = 176, .south = -15, .east = 178, .north = -12}},
        {fiji,
         {.west = -179, .south = -15, .east = 0, .north = 0},
         GeographicBounds{.west = -179, .south = -15, .east = -178, .north = -12}},
        {europe, allButEurope, GeographicBounds{.west = 40, .south = 25, .east = 48, .north = 84}}, // not 6 degrees
        {europe, fiji, std::nullopt},
        {fiji, pole, std::nullopt},
    };
    for (const CommonCase& tested : cases)
        for (const auto& common : {commonBounds(tested.left, tested.right), commonBounds(tested.right, tested.left)}) {
            SCOPED_TRACE(tested.right.west);
            ASSERT_EQ(common.has_value(), tested.common.has_value());
            if (!common)
                continue;
            EXPECT_EQ(common->west, tested.common->west);
            EXPECT_EQ(common->east, tested.common->east);
            EXPECT_EQ(common->south, tested.common->south);
            EXPECT_EQ(common->north, tested.common->north);
        }
}

TEST(GeographicBoundsTest, Middle_MayLieBeyondTheAntimeridian)
{
    const auto middle = GeographicBounds{.west = 176, .south = -20, .east = -170, .north = -12}.middle();
    EXPECT_EQ(middle.latitude, -16);
    EXPECT_EQ(middle.longitude, -177);
    const auto ofPole = GeographicBounds{.west = -180, .south = 60, .east = 180, .north = 90}.middle();
    EXPECT_EQ(ofPole.latitude, 75);
    EXPECT_EQ(ofPole.longitude, 0);
    const auto ofPoint = GeographicBounds{.west = 2.35, .south = 48.85, .east = 2.35, .north = 48.85}.middle();
    EXPECT_EQ(ofPoint.latitude, 48.85);
    EXPECT_EQ(ofPoint.longitude, 2.35);
}

} // namespace
