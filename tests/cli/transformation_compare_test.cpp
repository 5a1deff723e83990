// What the choice of a transformation costs at a place: the ranking and the distances.
#include <algorithm>

#include "transformation_comparison.h"

namespace Tests {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

using TransformationCompare = ComparisonTest;

TEST_F(TransformationCompare, EachCandidate_HasTheFieldsOfTheListAndThoseOfTheComparison)
{
    const Json comparison = compareForJson("EPSG:4230", "EPSG:4326", {"--at", "46,2"});
    EXPECT_EQ(comparison["source"], "EPSG:4230");
    EXPECT_EQ(comparison["target"], "EPSG:4326");
    EXPECT_EQ(comparison["point"], Json({46, 2}));
    EXPECT_EQ(comparison["place"], Json({{"area", nullptr}, {"points", 1}}));
    EXPECT_EQ(comparison["reference"], 1);
    Json ofFrance = candidate(comparison, "EPSG:1275");
    ASSERT_FALSE(ofFrance.is_null());
    EXPECT_EQ(ofFrance["bounds"], Json({-9.86, 41.15, 10.38, 51.56}));
    EXPECT_EQ(ofFrance["number"], 1);
    EXPECT_EQ(ofFrance["distance"], 0);
    EXPECT_EQ(ofFrance["covers"], "all");
    EXPECT_EQ(ofFrance["storable"], true);
    EXPECT_EQ(ofFrance["ballpark"], false);
    EXPECT_EQ(ofFrance["reason"], Json(nullptr));
    for (const char* added : {"number", "reason", "ballpark", "covers", "storable", "distance"})
        ofFrance.erase(added);
    bool isListed = false;
    const ProgramResult list = runWithGrids({"transformation", "list", "EPSG:4230", "EPSG:4326", "--json"});
    for (const Json& listed : Json::parse(list.output))
        isListed = isListed || listed == ofFrance;
    EXPECT_TRUE(isListed) << ofFrance;
}

TEST_F(TransformationCompare, Candidates_AreThoseOfTheListAndThoseThatProjComposes)
{
    for (const auto& [source, target] : {std::pair("EPSG:4230", "EPSG:4326"), std::pair("EPSG:23032", "EPSG:32632"),
                                         std::pair("EPSG:4267", "EPSG:4269")}) {
        std::vector<Json> listed;
        const ProgramResult list = runWithGrids({"transformation", "list", source, target, "--json"});
        for (const Json& operation : Json::parse(list.output))
            listed.push_back(operation["code"]);
        std::vector<Json> compared;
        std::size_t withoutCode = 0;
        for (const Json& code : codes(compareForJson(source, target))) {
            if (code.is_null())
                ++withoutCode;
            else
                compared.push_back(code);
        }
        EXPECT_THAT(compared, testing::UnorderedElementsAreArray(listed));
        EXPECT_EQ(withoutCode, 1U); // the ballpark one
    }
}

TEST_F(TransformationCompare, Ranking_PutsWhatCoversThePlaceFirst_ThenTheAccurateOnes)
{
    const Json comparison = compareForJson("EPSG:4230", "EPSG:4326", {"--bbox", "-5,42,8,51"});
    const std::vector<std::string> groups = {"all", "part", "none"};
    std::size_t group = 0;
    double accuracy = 0;
    bool isBallpark = false;
    for (const Json& candidate : comparison["candidates"]) {
        SCOPED_TRACE(candidate["name"]);
        if (candidate["ballpark"]) {
            isBallpark = true;
            EXPECT_EQ(candidate["covers"], "all");
            EXPECT_EQ(candidate["code"], Json(nullptr));
            EXPECT_EQ(candidate["kind"], Json(nullptr));
            EXPECT_EQ(candidate["storable"], false);
            continue;
        }
        const auto own = static_cast<std::size_t>(
            std::find(groups.begin(), groups.end(), candidate["covers"].get<std::string>()) - groups.begin());
        ASSERT_LT(own, groups.size());
        EXPECT_GE(own, group);
        EXPECT_EQ(own == 2, isBallpark); // it follows those that cover anything
        if (own > group)
            accuracy = 0;
        group = own;
        if (!candidate["usable"] && candidate["grids"].empty())
            continue;
        const double next = candidate["accuracy"].is_null() ? 1e9 : candidate["accuracy"].get<double>();
        EXPECT_GE(next, accuracy);
        accuracy = next;
    }
    EXPECT_EQ(group, 2U);
    EXPECT_TRUE(isBallpark);
    EXPECT_EQ(comparison["candidates"][0]["code"], "EPSG:1275"); // 2 m, where 1133 with 10 m covers it too
}

TEST_F(TransformationCompare, CandidateThatLacksAGrid_StandsAboveWithWhatBringsIt)
{
    const Json comparison = compareForJson("EPSG:4267", "EPSG:4269", {"--at", "40,-100"});
    const Json lacking = candidate(comparison, "EPSG:1241");
    EXPECT_EQ(lacking["number"], 1);
    EXPECT_EQ(lacking["usable"], false);
    EXPECT_EQ(lacking["storable"], false);
    EXPECT_EQ(lacking["distance"], Json(nullptr));
    EXPECT_EQ(lacking["grids"][0]["name"], kGrid);
    EXPECT_EQ(lacking["grids"][0]["available"], false);
    EXPECT_EQ(lacking["grids"][0]["file"], Json(nullptr));
    const std::string url = lacking["grids"][0]["url"];
    EXPECT_THAT(url, EndsWith(std::string("/") + kGrid));
    EXPECT_EQ(lacking["reason"],
              std::string("needs the grid ") + kGrid + ", which is not installed; download it from " + url);
    const ProgramResult printed = compare("EPSG:4267", "EPSG:4269", {"--at", "40,-100"});
    EXPECT_THAT(printed.output, HasSubstr(std::string("\n    grid ") + kGrid + ": not installed, " + url + "\n"));
    EXPECT_EQ(printed.errors,
              "orvelcs: transformation compare: EPSG:4267 to EPSG:4269: note: the best that can be used there is a "
              "ballpark one, which takes datums for equal\n");
}

TEST_F(TransformationCompare, InstalledGrid_GivesTheDistanceThatItShifts)
{
    givenGrid("data");
    const Json comparison = compareForJson("EPSG:4267", "EPSG:4269", {"--at", "40,-100"});
    EXPECT_EQ(comparison["reference"], 1);
    const Json grid = candidate(comparison, "EPSG:1241")["grids"][0];
    EXPECT_EQ(grid["available"], true);
    EXPECT_EQ(std::filesystem::path(grid["file"].get<std::string>()).filename(), kGrid);
    EXPECT_EQ(candidate(comparison, "EPSG:1241")["distance"], 0);
    for (const Json& candidate : comparison["candidates"]) {
        if (candidate["ballpark"]) { // 0.001 degrees to the north and 0.002 to the east, on GRS 1980
            EXPECT_NEAR(candidate["distance"].get<double>(), 203.71, 0.01);
        }
    }
}

TEST_F(TransformationCompare, PointOutsideOfAGrid_HasNoDistanceAndSaysSo)
{
    givenGrid("data");
    const Json comparison = compareForJson("EPSG:4267", "EPSG:4269", {"--at", "30,-100"});
    const Json candidate = ComparisonTest::candidate(comparison, "EPSG:1241");
    EXPECT_EQ(candidate["usable"], true);
    EXPECT_EQ(candidate["distance"], Json(nullptr));
    EXPECT_EQ(candidate["reason"], "gives no position at the point");
    EXPECT_GT(comparison["reference"], 1);
}

TEST_F(TransformationCompare, Table_HasARowForEachCandidate)
{
    const ProgramResult result = compare("EPSG:4275", "EPSG:4258");
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    EXPECT_THAT(result.output,
                testing::StartsWith("at 46.225, 2.38, distances from 2\n"
                                    "1        -  1 m  covers the place  transformation  EPSG:15959  ETRS89 to NTF (3)\n"
                                    "    France - onshore - mainland and Corsica.\n"
                                    "    grid fr_ign_ntf_r93.tif: not installed, http"));
    EXPECT_THAT(result.output,
                testing::EndsWith("\n2  0.000 m  2 m  covers the place  transformation  EPSG:1651   NTF to ETRS89 (1)\n"
                                  "    France - onshore - mainland and Corsica.\n"));
}

TEST_F(TransformationCompare, Between_ChoosesTwoByCodeNameOrNumber)
{
    const Json all = compareForJson("EPSG:4230", "EPSG:4326", {"--at", "46,2"});
    const Json expected = candidate(all, "EPSG:1133");
    const std::string number = expected["number"].dump();
    ASSERT_EQ(all["reference"], 1);
    ASSERT_EQ(all["candidates"][0]["code"], "EPSG:1275");
    for (const std::string& name : {std::string("epsg:1133"), std::string("ed50 to wgs 84 (1)"), number}) {
        const Json two = compareForJson("EPSG:4230", "EPSG:4326", {"--at", "46,2", "--between", "EPSG:1275", name});
        EXPECT_EQ(codes(two), Json({"EPSG:1275", "EPSG:1133"}));
        EXPECT_EQ(two["candidates"][1], expected);
    }
    const Json reversed = compareForJson("EPSG:4230", "EPSG:4326", {"--at", "46,2", "--between", number, "EPSG:1275"});
    EXPECT_EQ(codes(reversed), Json({"EPSG:1133", "EPSG:1275"}));
    EXPECT_EQ(reversed["reference"], expected["number"]);
    EXPECT_EQ(reversed["candidates"][0]["distance"], 0);
    EXPECT_NEAR(reversed["candidates"][1]["distance"].get<double>(), expected["distance"].get<double>(), 1e-9);
}

TEST_F(TransformationCompare, PointsAsThePlace_CountEachOfThem)
{
    given("points.txt", "\xEF\xBB\xBF# two towns\n48.85 2.35\r\n\n  43.6\t1.44  # the second\n");
    const Json covered = compareForJson("EPSG:4230", "EPSG:4326", {"--points", "points.txt"});
    EXPECT_EQ(covered["place"], Json({{"area", nullptr}, {"points", 2}}));
    EXPECT_EQ(candidate(covered, "EPSG:1275")["covers"], "all");
    EXPECT_EQ(candidate(covered, "EPSG:1784")["covers"], "none"); // Türkiye
    given("points.txt", "48.85 2.35\n39 33\n");
    const Json partly = compareForJson("EPSG:4230", "EPSG:4326", {"--points", "points.txt"});
    EXPECT_EQ(candidate(partly, "EPSG:1275")["covers"], "part");
    EXPECT_EQ(candidate(partly, "EPSG:1784")["covers"], "part");
    const ProgramResult piped = compare("EPSG:4230", "EPSG:4326", {"--points", "-", "--json"}, "48.85 2.35\n39 33\n");
    EXPECT_EQ(Json::parse(piped.output), partly);
}

TEST_F(TransformationCompare, AreaOfASystemAsThePlace_IsThatOfACodeOrADrawing)
{
    const Json byCode = compareForJson("EPSG:4230", "EPSG:4326", {"--area-of", "EPSG:2154"});
    EXPECT_EQ(byCode["place"], Json({{"area", {-9.86, 41.15, 10.38, 51.56}}, {"points", nullptr}}));
    EXPECT_EQ(byCode["candidates"][0]["code"], "EPSG:1275");
    givenDrawingWith("plan.qedb", "EPSG:2154");
    EXPECT_EQ(compareForJson("EPSG:4230", "EPSG:4326", {"--area-of", "@plan.qedb"}), byCode);
    given("plain.txt", "+proj=utm +zone=31 +type=crs");
    expectResult(compare("EPSG:4230", "EPSG:4326", {"--area-of", "@plain.txt"}), 3, "",
                 "orvelcs: transformation compare: @plain.txt: has no area of use; --bbox gives one\n");
}

TEST_F(TransformationCompare, PlaceAcrossTheAntimeridian_IsCoveredByAnAreaAcrossIt)
{
    // Fiji 1986 to WGS 84 (2): from 176.81 east to 178.15 west.
    const Json across = compareForJson("EPSG:4720", "EPSG:4326", {"--bbox", "177,-20,-179,-13"});
    EXPECT_EQ(across["candidates"][0]["covers"], "all");
    EXPECT_EQ(across["point"], Json({-16.5, 179}));
    EXPECT_NEAR(compareForJson("EPSG:4720", "EPSG:4326")["point"][1].get<double>(), 179.33, 0.01);
    EXPECT_EQ(compareForJson("EPSG:4720", "EPSG:4326", {"--bbox", "-179,-20,177,-13"})["candidates"][0]["covers"],
              "part");
}

TEST_F(TransformationCompare, PolarSystems_AreComparedAroundThePole)
{
    const Json north = compareForJson("EPSG:3413", "EPSG:4269", {"--bbox", "-180,75,180,90"});
    EXPECT_EQ(north["point"], Json({82.5, 0}));
    const Json common = compareForJson("EPSG:3413", "EPSG:3995")["commonArea"];
    EXPECT_EQ(common, Json({-180, 60, 180, 90}));
    expectResult(compare("EPSG:3031", "EPSG:3413"), 3, "", HasSubstr("the areas of use have nothing in common"));
}

TEST_F(TransformationCompare, DistancesOfProjectedSystems_AreThoseOfTheirGeographicOnes)
{
    const Arguments place = {"--at", "46,2"};
    const Json geographic = compareForJson("EPSG:4230", "EPSG:4326", place);
    const Json projected = compareForJson("EPSG:23031", "EPSG:32631", place);
    ASSERT_EQ(codes(projected), codes(geographic));
    for (std::size_t index = 0; index < geographic["candidates"].size(); ++index)
        EXPECT_EQ(projected["candidates"][index]["distance"], geographic["candidates"][index]["distance"]);
}

TEST_F(TransformationCompare, OtherPrimeMeridianAndUnit_LeaveThePlaceInDegreesFromGreenwich)
{
    // Grads from Paris. From there, 9 degrees east would lie outside of the area of France.
    const Json paris = compareForJson("EPSG:4807", "EPSG:4326", {"--at", "42.5,9"});
    EXPECT_EQ(paris["candidates"][0]["code"], "EPSG:8094");
    EXPECT_EQ(paris["candidates"][0]["covers"], "all");
    EXPECT_EQ(compareForJson("EPSG:4807", "EPSG:4326", {"--at", "42.5,11"}, 3)["candidates"][0]["covers"], "none");
}

TEST_F(TransformationCompare, CompoundSystems_AreComparedWithoutTheirHeights)
{
    const ProgramResult result = compare("EPSG:7415", "EPSG:4979", {"--json"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "orvelcs: transformation compare: EPSG:7415 to EPSG:4979: note: heights are left out; "
                             "distances are horizontal\n");
    EXPECT_NE(candidate(Json::parse(result.output), "EPSG:4833"), Json(nullptr));
}

} // namespace
} // namespace Tests
