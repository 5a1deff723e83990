// config add --best stores the best candidate that can be stored.
#include "shift_grid.h"

namespace Tests {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class ConfigAddBest : public GridTest {
protected:
    ConfigAddBest() { givenDrawing("plan.qedb"); }

    ProgramResult addBest(const std::string& source, const std::string& target, const Arguments& options = {}) const
    {
        return runWithGrids(concatenate(
            {"config", "add", "--best", "--source", source, "--target", target, "--drawing", "plan.qedb"}, options));
    }
    Json items() const { return runForJson({"config", "items", "--drawing", "plan.qedb"}); }
};

TEST_F(ConfigAddBest, StoresTheFirstOfTheRanking_AndShowsIt)
{
    expectResult(addBest("EPSG:4230", "EPSG:4326", {"--at", "46,2"}), 0, "plan.qedb: item added\n",
                 "orvelcs: config add: EPSG:4230 to EPSG:4326: note: the best that can be stored is EPSG:1275 (ED50 to "
                 "WGS 84 (17)), 2 m, covers the place: France - onshore and offshore, mainland and Corsica (France "
                 "métropolitaine "
                 "including Corsica).\n");
    const Json stored = items();
    ASSERT_EQ(stored.size(), 1U);
    EXPECT_EQ(stored[0]["name"], "ED50 to WGS 84 (17)");
    EXPECT_EQ(stored[0]["type"], 2);
    EXPECT_EQ(stored[0]["sourceCs"], "EPSG:4230");
    EXPECT_EQ(runForJson({"transformation", "EPSG:4230", "EPSG:4326", "--drawing", "plan.qedb"}),
              Json({{"name", "ED50 to WGS 84 (17)"}, {"kind", 2}}));
}

TEST_F(ConfigAddBest, CandidatesThatLackAGrid_AreSkippedWithTheReason)
{
    const ProgramResult result = addBest("EPSG:4275", "EPSG:4258");
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.errors,
                StartsWith("orvelcs: config add: EPSG:4275 to EPSG:4258: note: EPSG:15959 (ETRS89 to NTF (3)) is "
                           "skipped: it needs the grid fr_ign_ntf_r93.tif, which is not installed; download it from "));
    EXPECT_THAT(result.errors, HasSubstr("the best that can be stored is EPSG:1651 (NTF to ETRS89 (1)), 2 m"));
    EXPECT_EQ(items()[0]["name"], "NTF to ETRS89 (1)");
}

TEST_F(ConfigAddBest, InstalledGrid_IsChosen)
{
    givenGrid("data");
    EXPECT_EQ(addBest("EPSG:4267", "EPSG:4269", {"--bbox", "-100,36,-98,40"}).status, 0);
    EXPECT_EQ(items()[0]["name"], "NAD27 to NAD83 (1)");
}

TEST_F(ConfigAddBest, Path_IsStoredAsAPath)
{
    EXPECT_EQ(addBest("EPSG:4807", "EPSG:4326").status, 0);
    EXPECT_EQ(items()[0]["name"], "NTF (Paris) to WGS 84 (1)");
    EXPECT_EQ(items()[0]["type"], 1);
}

TEST_F(ConfigAddBest, Json_HasTheCandidate)
{
    const ProgramResult result = addBest("EPSG:4230", "EPSG:4326", {"--at", "46,2", "--json"});
    const Json document = Json::parse(result.output);
    EXPECT_EQ(document["result"], true);
    EXPECT_EQ(document["best"]["code"], "EPSG:1275");
    EXPECT_EQ(document["best"]["covers"], "all");
}

TEST_F(ConfigAddBest, NothingThatCanBeStored_ChangesNothing)
{
    const std::string before = contents("plan.qedb");
    const ProgramResult outside = addBest("EPSG:4230", "EPSG:4326", {"--at", "-40,175"});
    EXPECT_EQ(outside.status, 3);
    EXPECT_THAT(outside.errors, HasSubstr("its area of use lies outside of the place\n"));
    EXPECT_THAT(outside.errors, testing::AllOf(HasSubstr("EPSG:4230 to EPSG:4326: none of the "),
                                               HasSubstr(" that lead from one to the other can be stored for the "
                                                         "place\n")));
    const ProgramResult ballpark = addBest("EPSG:4267", "EPSG:4269", {"--at", "40,-100", "--json"});
    EXPECT_EQ(ballpark.status, 3);
    EXPECT_THAT(ballpark.errors,
                HasSubstr("Ballpark geographic offset from NAD27 to NAD83 is skipped: it is not in the catalog, and a "
                          "configuration names operations of the catalog\n"));
    EXPECT_EQ(Json::parse(ballpark.output)["result"], false);
    EXPECT_EQ(contents("plan.qedb"), before);
}

TEST_F(ConfigAddBest, SecondItemOfThePair_IsRefused)
{
    EXPECT_EQ(addBest("EPSG:4230", "EPSG:4326").status, 0);
    const ProgramResult second = addBest("EPSG:4230", "EPSG:4326");
    EXPECT_EQ(second.status, 1);
    EXPECT_THAT(second.errors, HasSubstr("has an item already"));
    EXPECT_EQ(items().size(), 1U);
}

TEST_F(ConfigAddBest, User_GetsTheItem)
{
    std::filesystem::create_directories(path("user"));
    const std::string folder = path("user").string();
    EXPECT_EQ(runWithGrids({"config", "add", "--best", "--source", "EPSG:4230", "--target", "EPSG:4326", "--at", "46,2",
                            "--user", "--user-dir", folder})
                  .status,
              0);
    EXPECT_EQ(runForJson({"config", "items", "--user", "--user-dir", folder})[0]["name"], "ED50 to WGS 84 (17)");
}

TEST_F(ConfigAddBest, InvalidOptions_AreWrongUsage)
{
    expectWrongUsage(addBest("EPSG:4230", "EPSG:4326", {"--name", "ED50 to WGS 84 (1)"}),
                     "orvelcs: config add: --best: chooses the name and the type; leave out --name and --type");
    const Arguments named = {"config",   "add",       "--source",  "EPSG:4230",
                             "--target", "EPSG:4326", "--drawing", "plan.qedb"};
    expectWrongUsage(run(named), "orvelcs: config add: --name: is required without --best");
    expectWrongUsage(run(concatenate(named, {"--name", "n"})),
                     "orvelcs: config add: --type: is required without --best");
    expectWrongUsage(run(concatenate(named, {"--name", "n", "--type", "path", "--at", "48,2"})),
                     "orvelcs: config add: --at, --bbox, --points, --area-of: go with --best only");
}

} // namespace
} // namespace Tests
