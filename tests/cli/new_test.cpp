#include "command_line_test.h"

namespace Tests {
namespace {

using NewCommand = CommandLineTest;

TEST_F(NewCommand, MakesADrawingOfTheCurrentVersion)
{
    EXPECT_EQ(runForJson({"new", "plan.qedb"}), Json({{"file", "plan.qedb"}, {"drawingVersion", 33}}));
    EXPECT_THAT(drawing("plan.qedb"), testing::StartsWith("drawing version " + std::to_string(33)));
}

TEST_F(NewCommand, SaysWhatItMade)
{
    expectResult(run({"new", "plan.qedb"}), 0, "plan.qedb: new drawing, version 33\n", "");
}

TEST_F(NewCommand, Quiet_SaysNothing)
{
    expectResult(run({"new", "-q", "plan.qedb"}), 0, "", "");
    EXPECT_EQ(files(), std::vector<std::string>{"plan.qedb"});
}

TEST_F(NewCommand, SeveralFiles_PrintAnArrayInTheirOrder)
{
    EXPECT_EQ(runForJson({"new", "b.qedb", "a.qedb", "--drawing-version", "25"}),
              Json::parse(R"([{"file": "b.qedb", "drawingVersion": 25}, {"file": "a.qedb", "drawingVersion": 25}])"));
}

TEST_F(NewCommand, OldestAndNewestVersionAreTaken)
{
    for (const int version : {21, 33}) {
        const std::string name = "v" + std::to_string(version) + ".qedb";
        EXPECT_EQ(runForJson({"new", "--drawing-version=" + std::to_string(version), name})["drawingVersion"], version);
        EXPECT_THAT(drawing(name), testing::StartsWith("drawing version " + std::to_string(version)));
    }
}

TEST_F(NewCommand, AnotherVersion_IsWrongUsage)
{
    for (const std::string version : {"20", "34", "-1", "x", "33.0", " 33", "99999999999999999999"})
        expectWrongUsage(run({"new", "plan.qedb", "--drawing-version", version}),
                         "orvelcs: new: --drawing-version: expected a whole number from 21 to 33, found " + version);
    EXPECT_TRUE(files().empty());
}

TEST_F(NewCommand, ExistingFile_IsNotOverwritten)
{
    given("plan.qedb", "mine");
    expectResult(run({"new", "plan.qedb"}), 1, "", "orvelcs: new: plan.qedb: exists; --force overwrites it\n");
    EXPECT_EQ(contents("plan.qedb"), "mine");
}

TEST_F(NewCommand, ExistingFile_DoesNotStopABatch)
{
    given("b.qedb", "mine");
    EXPECT_EQ(runForJson({"new", "a.qedb", "b.qedb", "c.qedb"}, 1), Json::parse(R"([
        {"file": "a.qedb", "drawingVersion": 33},
        {"file": "b.qedb", "drawingVersion": null, "result": null, "error": "exists; --force overwrites it"},
        {"file": "c.qedb", "drawingVersion": 33}])"));
    EXPECT_EQ(contents("b.qedb"), "mine");
}

TEST_F(NewCommand, Force_OverwritesAndLeavesNothingBeside)
{
    given("plan.qedb", "mine");
    expectResult(run({"new", "--force", "--quiet", "plan.qedb"}), 0, "", "");
    EXPECT_THAT(drawing("plan.qedb"), testing::StartsWith("drawing version " + std::to_string(33)));
    EXPECT_EQ(files(), std::vector<std::string>{"plan.qedb"});
}

TEST_F(NewCommand, MissingFolder_FailsWithTheHostsCode)
{
    const Json json = runForJson({"new", "missing/plan.qedb"}, 1);
    EXPECT_EQ(json["drawingVersion"], nullptr);
    EXPECT_EQ(json["result"], 54);
    EXPECT_THAT(json["error"].get<std::string>(), testing::StartsWith("eFileWriteFailed (54): "));
}

TEST_F(NewCommand, NameInUtf8_IsUsedAsItIs)
{
    expectResult(run({"new", "Stra\xC3\x9F"
                             "e.qedb"}),
                 0,
                 "Stra\xC3\x9F"
                 "e.qedb: new drawing, version 33\n",
                 "");
    EXPECT_EQ(files(), std::vector<std::string>{"Stra\xC3\x9F"
                                                "e.qedb"});
}

TEST_F(NewCommand, NameBeginningWithADash_IsTakenAfterTwoDashes)
{
    expectResult(run({"new", "-q", "--", "-plan.qedb"}), 0, "", "");
    EXPECT_EQ(files(), std::vector<std::string>{"-plan.qedb"});
}

TEST_F(NewCommand, NameOfACommand_IsAFileAfterTheCommand)
{
    expectResult(run({"new", "-q", "clear", "new"}), 0, "", "");
    EXPECT_EQ(files(), (std::vector<std::string>{"clear", "new"}));
}

TEST_F(NewCommand, NameInBrackets_IsOneFile)
{
    expectResult(run({"new", "-q", "[a,b]"}), 0, "", "");
    EXPECT_EQ(files(), std::vector<std::string>{"[a,b]"});
}

TEST_F(NewCommand, Dash_PrintsTheDrawing)
{
    givenDrawing("plan.qedb", 25);
    const ProgramResult result = run({"new", "--drawing-version", "25", "-"});
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(drawingIn(result.output), drawing("plan.qedb"));
}

TEST_F(NewCommand, DashWithJson_IsWrongUsage)
{
    expectWrongUsage(run({"new", "-", "--json"}),
                     "orvelcs: new: -: the drawing itself goes to standard output, where --json has no place");
}

} // namespace
} // namespace Tests
