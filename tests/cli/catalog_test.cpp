#include "command_line_test.h"

namespace Tests {
namespace {

using CatalogCommand = CommandLineTest;

TEST_F(CatalogCommand, SearchForACode_FindsTheSystem)
{
    EXPECT_EQ(runForJson({"catalog", "search", "EPSG:25832"})[0],
              Json({{"code", "EPSG:25832"},
                    {"name", "ETRS89 / UTM zone 32N"},
                    {"kind", 3},
                    {"deprecated", false},
                    {"areaOfUse",
                     {{"name", runForJson({"catalog", "show", "EPSG:25832"})["areaOfUse"]},
                      {"bounds", {6.0, 38.76, 12.01, 84.33}}}}}));
}

TEST_F(CatalogCommand, SearchForWordsOfAName_FindsTheSystem)
{
    for (const Arguments& words : {Arguments{"ETRS89 / UTM zone 32N"}, Arguments{"etrs89", "/", "utm", "zone", "32n"}})
        EXPECT_EQ(runForJson(concatenate({"catalog", "search"}, words))[0]["code"], "EPSG:25832");
}

TEST_F(CatalogCommand, Search_PrintsAlignedColumns)
{
    expectResult(run({"catalog", "search", "LOCAL:"}), 0,
                 "LOCAL:FOOT            not referenced to the Earth  Local plane (foot)            Anywhere: a site's "
                 "own plane\n"
                 "LOCAL:METRE           not referenced to the Earth  Local plane (metre)           Anywhere: a site's "
                 "own plane\n"
                 "LOCAL:US-SURVEY-FOOT  not referenced to the Earth  Local plane (US survey foot)  Anywhere: a site's "
                 "own plane\n",
                 "");
}

TEST_F(CatalogCommand, SearchWithAKind_FindsOnlySystemsOfThatKind)
{
    const Json all = runForJson({"catalog", "search", "--kind", "4", "WGS 84"});
    ASSERT_FALSE(all.empty());
    for (const Json& entry : all)
        EXPECT_EQ(entry["kind"], 4);
}

TEST_F(CatalogCommand, SearchWithAnAuthority_FindsOnlyItsSystems)
{
    const Json all = runForJson({"catalog", "search", "--authority", "esri", "Jordan"});
    ASSERT_FALSE(all.empty());
    for (const Json& entry : all)
        EXPECT_THAT(entry["code"].get<std::string>(), testing::StartsWith("ESRI:"));
}

TEST_F(CatalogCommand, Search_FindsDeprecatedSystemsOnlyWithTheOption)
{
    EXPECT_EQ(runForJson({"catalog", "search", "EPSG:3785"}, 3), Json::array());
    const Json all = runForJson({"catalog", "search", "EPSG:3785", "--deprecated"});
    EXPECT_EQ(all[0]["code"], "EPSG:3785");
    EXPECT_EQ(all[0]["deprecated"], true);
    EXPECT_THAT(run({"catalog", "search", "EPSG:3785", "--deprecated"}).output,
                testing::HasSubstr(" (deprecated)  World"));
}

TEST_F(CatalogCommand, SearchWithALimit_FindsNoMoreSystems)
{
    EXPECT_EQ(runForJson({"catalog", "search", "UTM", "--limit", "7"}).size(), 7U);
    EXPECT_GT(runForJson({"catalog", "search", "UTM"}).size(), 100U);
}

TEST_F(CatalogCommand, SearchWithoutAMatch_ExitsWithStatusThree)
{
    EXPECT_EQ(runForJson({"catalog", "search", "no such grid anywhere"}, 3), Json::array());
    const ProgramResult result = run({"catalog", "search", "no such grid anywhere"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.output, "");
    EXPECT_EQ(result.errors, "orvelcs: catalog search: no such grid anywhere: nothing matches\n");
}

TEST_F(CatalogCommand, SearchForAMisspeltCode_SuggestsTheNearestCodes)
{
    const ProgramResult result = run({"catalog", "search", "EPGS:25832"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.errors,
                testing::StartsWith("orvelcs: catalog search: EPGS:25832: nothing matches; the nearest "));
    EXPECT_THAT(result.errors, testing::HasSubstr("EPSG:25832"));
}

TEST_F(CatalogCommand, SearchWithAMisspeltAuthority_SuggestsTheNearestAuthority)
{
    const ProgramResult result = run({"catalog", "search", "--authority", "EPGS", "UTM"});
    expectResult(result, 3, "",
                 "orvelcs: catalog search: EPGS: the catalog has no such authority; the nearest is EPSG\n");
}

TEST_F(CatalogCommand, SearchWithInvalidArguments_IsWrongUsage)
{
    expectWrongUsage(run({"catalog", "search", "--kind", "5", "UTM"}),
                     "orvelcs: catalog search: --kind: expected a whole number from 1 to 4, found 5");
    expectWrongUsage(run({"catalog", "search", "--limit", "0", "UTM"}),
                     "orvelcs: catalog search: --limit: expected a whole number from 1 to 2147483647, found 0");
    expectWrongUsage(run({"catalog", "search"}), "orvelcs: catalog search: TEXT: is required");
}

TEST_F(CatalogCommand, Show_PrintsTheWholeEntry)
{
    const Json json = runForJson({"catalog", "show", "EPSG:25832"});
    EXPECT_EQ(json["code"], "EPSG:25832");
    EXPECT_EQ(json["name"], "ETRS89 / UTM zone 32N");
    EXPECT_EQ(json["kind"], 3);
    EXPECT_EQ(json["datum"], "EPSG:6258");
    EXPECT_EQ(json["ellipsoid"], "EPSG:7019");
    EXPECT_EQ(json["knownToCatalog"], true);
    EXPECT_EQ(json["source"], nullptr);
    EXPECT_EQ(json["deprecated"], false);
    EXPECT_EQ(json["replacedBy"], nullptr);
    EXPECT_THAT(json["areaOfUse"].get<std::string>(), testing::HasSubstr("Europe"));
    EXPECT_FALSE(json.contains("wkt"));
    EXPECT_FALSE(json.contains("file"));
}

TEST_F(CatalogCommand, ShowOfADeprecatedSystem_NamesItsReplacement)
{
    const Json json = runForJson({"catalog", "show", "EPSG:3785"});
    EXPECT_EQ(json["deprecated"], true);
    EXPECT_EQ(json["replacedBy"], "EPSG:3857");
    EXPECT_EQ(json["replacements"], Json::array({"EPSG:3857"}));
    EXPECT_THAT(run({"catalog", "show", "EPSG:3785"}).output, testing::HasSubstr("  replaced by  EPSG:3857\n"));
}

TEST_F(CatalogCommand, ShowWithWktOption_AddsTheWkt)
{
    EXPECT_THAT(runForJson({"catalog", "show", "EPSG:25832", "--wkt"})["wkt"].get<std::string>(),
                testing::StartsWith("PROJCS[\"ETRS89 / UTM zone 32N\""));
}

TEST_F(CatalogCommand, ShowOfAnUnknownCode_ExitsWithStatusThree)
{
    EXPECT_EQ(runForJson({"catalog", "show", "EPSG:2583200"}, 3), Json(nullptr));
    const ProgramResult result = run({"catalog", "show", "ESPG:25832"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors,
                testing::StartsWith("orvelcs: catalog show: ESPG:25832: the catalog has no such code; the nearest "));
    EXPECT_THAT(result.errors, testing::HasSubstr("EPSG:25832"));
}

} // namespace
} // namespace Tests
