// Several processes change the user's configuration at once.
#include "concurrent_commands.h"

namespace Tests {
namespace {

using ConcurrentConfig = ConcurrentCommands;

TEST_F(ConcurrentConfig, EightAdditions_AreAllStored)
{
    for (int round = 0; round < rounds(2) && !HasFailure(); ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        std::filesystem::remove_all(path("user"));
        expectAdditionsStored({"--user", "--user-dir", path("user").string()});
    }
}

TEST_F(ConcurrentConfig, OfEightItemsOfOnePair_OneIsStored)
{
    const Arguments store = {"--user", "--user-dir", path("user").string(), "--registry", path("registry").string()};
    const Arguments addition = {"config",    "add",    "--source",       "EPSG:4230", "--target", "EPSG:4326", "--name",
                                "EPSG:1133", "--type", "transformation", "-q",        "--wait",   "120"};
    int done = 0;
    for (const ProgramResult& result : runAtOnce(std::vector<Arguments>(8, concatenate(addition, store)))) {
        EXPECT_EQ(result.status, result.errors.empty() ? 0 : 1) << result.errors;
        done += result.status == 0;
    }
    EXPECT_EQ(done, 1);
    EXPECT_EQ(Json::parse(run(concatenate({"config", "items", "--json"}, store)).output).size(), 1U);
}

TEST_F(ConcurrentConfig, RemovalsAtOnce_RemoveEachItsOwnItem)
{
    const Arguments store = {"--user", "--user-dir", path("user").string(), "--registry", path("registry").string()};
    std::vector<Arguments> removals;
    for (const char* source : {"S0", "S1", "S2", "S3"}) {
        ASSERT_EQ(run(addition(source, store)).status, 0);
        removals.push_back(
            concatenate({"config", "remove", "--source", source, "--target", "T", "-q", "--wait", "120"}, store));
    }
    ASSERT_EQ(run(addition("S4", store)).status, 0);
    for (const ProgramResult& result : runAtOnce(removals))
        expectResult(result, 0, "", "");
    EXPECT_EQ(storedSources(store), std::set<std::string>{"S4"});
}

} // namespace
} // namespace Tests
