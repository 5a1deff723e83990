// What cannot be compared, and places that are wrong or lie elsewhere.
#include "transformation_comparison.h"

namespace Tests {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

using ComparisonRefusal = ComparisonTest;

TEST_F(ComparisonRefusal, BetweenOfAnUnknownCandidate_NamesTheNearest)
{
    const auto between = [this](const std::string& name) {
        return compare("EPSG:4230", "EPSG:4326", {"--between", "EPSG:1275", name});
    };
    expectResult(between("ED50 to WGS 84 (222)"), 3, "",
                 StartsWith("orvelcs: transformation compare: --between: no candidate is called ED50 to WGS 84 (222); "
                            "the nearest are ED50 to WGS 84"));
    expectResult(
        between("99"), 3, "",
        StartsWith("orvelcs: transformation compare: --between: there is no candidate 99; the numbers are from "
                   "1 to "));
    expectWrongUsage(between("epsg:1275"),
                     "orvelcs: transformation compare: --between: EPSG:1275 (ED50 to WGS 84 (17)) "
                     "is both; a comparison needs two");
}

TEST_F(ComparisonRefusal, BetweenOfANameThatSeveralHave_AsksForANumber)
{
    expectResult(compare("EPSG:25832", "EPSG:4326", {"--between", "ETRS 89 vers WGS 84", "EPSG:1149"}), 2, "",
                 HasSubstr("several candidates are called ETRS 89 vers WGS 84, such as "));
}

TEST_F(ComparisonRefusal, PointsThatCannotBeRead_NameTheLine)
{
    const auto errorsWith = [this](const std::string& text) {
        given("points.txt", text);
        const ProgramResult result = compare("EPSG:4230", "EPSG:4326", {"--points", "points.txt"});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.output, "");
        return result.errors;
    };
    const std::string prefix = "orvelcs: transformation compare: points.txt: ";
    EXPECT_EQ(errorsWith(""), prefix + "has no point; expected a latitude and a longitude on each line\n");
    EXPECT_EQ(errorsWith("# none\n\n"), prefix + "has no point; expected a latitude and a longitude on each line\n");
    EXPECT_EQ(errorsWith("48 2\n48 x\n"),
              prefix + "line 2: expected a latitude and a longitude; expected 2 to 4 numbers, found \"x\"\n");
    EXPECT_EQ(errorsWith("48 2 100\n"), prefix + "line 1: expected a latitude and a longitude, found more numbers\n");
    EXPECT_EQ(errorsWith("2 190\n"),
              prefix + "line 1: expected a latitude from -90 to 90 and a longitude from -180 to 180, found 2 190\n");
    EXPECT_THAT(compare("EPSG:4230", "EPSG:4326", {"--points", "none.txt"}).errors,
                StartsWith("orvelcs: transformation compare: none.txt: "));
}

TEST_F(ComparisonRefusal, SystemsWithoutACommonArea_NeedAPlace)
{
    expectResult(compare("EPSG:2056", "EPSG:2193"), 3, "",
                 "orvelcs: transformation compare: EPSG:2056 to EPSG:2193: the areas of use have nothing in common; "
                 "--at, --bbox, --points or --area-of says which place matters\n");
    EXPECT_EQ(compareForJson("EPSG:2056", "EPSG:2193", {"--at", "47,8"})["commonArea"], Json(nullptr));
}

TEST_F(ComparisonRefusal, SystemsWithoutAKnownArea_NeedAPlace)
{
    given("one.txt", "+proj=utm +zone=31 +ellps=intl +towgs84=-87,-98,-121 +type=crs");
    given("other.txt", "+proj=utm +zone=31 +ellps=GRS80 +type=crs");
    expectResult(compare("@one.txt", "@other.txt"), 2, "",
                 HasSubstr("no area of use is known; --at, --bbox, --points or --area-of says which place matters"));
    EXPECT_EQ(compareForJson("@one.txt", "@other.txt", {"--at", "48,2"})["source"], Json(nullptr));
}

TEST_F(ComparisonRefusal, OneCandidate_IsShownWithANote)
{
    const ProgramResult result = compare("EPSG:25832", "EPSG:25833");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output, HasSubstr("\n1  0.000 m  0 m  covers the place  composed by PROJ  -  Null geographic "
                                         "offset from ETRS89 to ETRS89\n"));
    EXPECT_THAT(result.output, EndsWith("    not in the catalog, so no configuration can name it\n"));
    EXPECT_EQ(result.errors, "orvelcs: transformation compare: EPSG:25832 to EPSG:25833: note: there is one candidate "
                             "only, so there is nothing to compare it with\n");
}

TEST_F(ComparisonRefusal, SystemsOfDifferentBodies_HaveNoCandidate)
{
    expectResult(compare("ESRI:104903", "EPSG:4326"), 3, "",
                 "orvelcs: transformation compare: ESRI:104903 to EPSG:4326: nothing leads from one to the other\n");
}

TEST_F(ComparisonRefusal, PlaceOutsideOfAllAreas_IsPrintedAndReported)
{
    const ProgramResult result = compare("EPSG:4230", "EPSG:4326", {"--at", "-40,175", "--json"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.errors, EndsWith("EPSG:4230 to EPSG:4326: the place lies outside of the area of use of every "
                                        "candidate\n"));
    const Json comparison = Json::parse(result.output);
    EXPECT_EQ(comparison["candidates"][0]["ballpark"], true);
    for (const Json& candidate : comparison["candidates"])
        EXPECT_TRUE(candidate["ballpark"] || candidate["covers"] == "none");
}

TEST_F(ComparisonRefusal, SystemsThatCannotBeCompared_AreRefused)
{
    expectWrongUsage(compare("EPSG:2056", "epsg:2056"),
                     "orvelcs: transformation compare: EPSG:2056: is both systems; a comparison needs two");
    expectResult(compare("EPSG:5703", "EPSG:4326"), 3, "",
                 "orvelcs: transformation compare: EPSG:5703: is a vertical system, which a drawing cannot have\n");
    expectResult(
        compare("EPSG:48078", "EPSG:4326"), 3, "",
        StartsWith("orvelcs: transformation compare: EPSG:48078: the catalog has no such code; the nearest are "
                   "EPSG:4807"));
    expectResult(compare("LOCAL:METRE", "EPSG:4326"), 1, "",
                 "orvelcs: transformation compare: LOCAL:METRE: is not referenced to the Earth, so nothing leads from "
                 "or to it\n");
    givenDrawing("empty.qedb");
    expectResult(compare("@empty.qedb", "EPSG:4326"), 3, "",
                 "orvelcs: transformation compare: empty.qedb: has no coordinate system\n");
}

TEST_F(ComparisonRefusal, FailureAsJson_IsAnErrorDocument)
{
    const ProgramResult result = compare("EPSG:2056", "EPSG:2193", {"--json"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(errorLine(Json::parse(result.output)["error"]), result.errors);
}

TEST_F(ComparisonRefusal, InvalidPlaces_AreWrongUsage)
{
    const auto errorsWith = [this](const Arguments& options) {
        const ProgramResult result = compare("EPSG:4230", "EPSG:4326", options);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.output, "");
        return result.errors;
    };
    EXPECT_THAT(errorsWith({"--at", "2.35"}), HasSubstr("--at: expected LAT,LON in degrees, found 2.35"));
    EXPECT_THAT(errorsWith({"--at", "100,2"}), HasSubstr("--at: a latitude is from -90 to 90"));
    EXPECT_THAT(errorsWith({"--bbox", "0,50,10,40"}), HasSubstr("--bbox: the south 50 is north of the north 40"));
    EXPECT_THAT(errorsWith({"--bbox", "0,40,10,50", "--area-of", "EPSG:2154"}),
                HasSubstr("--bbox, --points, --area-of: say the same in different ways; give one of them"));
    EXPECT_NE(errorsWith({"--between", "1"}), "");
}

} // namespace
} // namespace Tests
