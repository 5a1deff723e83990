#include "command_line_test.h"

namespace Tests {
namespace {

using NewCommand = CommandLineTest;

TEST_F(NewCommand, NewDrawing_HasTheCurrentVersion)
{
    EXPECT_EQ(runForJson({"new", "plan.qedb"}), Json({{"file", "plan.qedb"}, {"drawingVersion", 33}}));
    EXPECT_THAT(drawing("plan.qedb"), testing::StartsWith("drawing version 33\n"));
}

TEST_F(NewCommand, NewDrawing_IsConfirmedInOneLine)
{
    expectResult(run({"new", "plan.qedb"}), 0, "plan.qedb: new drawing, version 33\n", "");
}

TEST_F(NewCommand, QuietOption_PrintsNothing)
{
    expectResult(run({"new", "-q", "plan.qedb"}), 0, "", "");
    EXPECT_EQ(files(), std::vector<std::string>{"plan.qedb"});
}

TEST_F(NewCommand, SeveralFiles_PrintAJsonArrayInOrder)
{
    EXPECT_EQ(runForJson({"new", "b.qedb", "a.qedb", "--drawing-version", "25"}),
              Json::parse(R"([{"file": "b.qedb", "drawingVersion": 25}, {"file": "a.qedb", "drawingVersion": 25}])"));
}

TEST_F(NewCommand, OldestAndNewestVersion_AreAccepted)
{
    for (const int version : {21, 33}) {
        const std::string name = "v" + std::to_string(version) + ".qedb";
        EXPECT_EQ(runForJson({"new", "--drawing-version=" + std::to_string(version), name})["drawingVersion"], version);
        EXPECT_THAT(drawing(name), testing::StartsWith("drawing version " + std::to_string(version)));
    }
}

TEST_F(NewCommand, UnknownVersion_IsWrongUsage)
{
    for (const std::string version : {"20", "34", "-1", "x", "33.0", " 33", "99999999999999999999"})
        expectWrongUsage(run({"new", "plan.qedb", "--drawing-version", version}),
                         "orvelcs: new: --drawing-version: expected a whole number from 21 to 33, found " + version);
    EXPECT_TRUE(files().empty());
}

TEST_F(NewCommand, ExistingFile_IsNotOverwritten)
{
    given("plan.qedb", "another file");
    expectResult(run({"new", "plan.qedb"}), 1, "", "orvelcs: new: plan.qedb: exists; --force overwrites it\n");
    EXPECT_EQ(contents("plan.qedb"), "another file");
}

TEST_F(NewCommand, ExistingFile_DoesNotStopABatch)
{
    given("b.qedb", "another file");
    Json expected = Json::parse(R"([
        {"file": "a.qedb", "drawingVersion": 33},
        {"file": "b.qedb", "drawingVersion": null, "result": null},
        {"file": "c.qedb", "drawingVersion": 33}])");
    expected[1]["error"] = errorMember("new", "b.qedb", nullptr, nullptr, "exists; --force overwrites it");
    EXPECT_EQ(runForJson({"new", "a.qedb", "b.qedb", "c.qedb"}, 1), expected);
    EXPECT_EQ(contents("b.qedb"), "another file");
}

TEST_F(NewCommand, ForceOption_OverwritesTheFileAndLeavesNoOther)
{
    given("plan.qedb", "another file");
    expectResult(run({"new", "--force", "--quiet", "plan.qedb"}), 0, "", "");
    EXPECT_THAT(drawing("plan.qedb"), testing::StartsWith("drawing version 33\n"));
    EXPECT_EQ(files(), std::vector<std::string>{"plan.qedb"});
}

TEST_F(NewCommand, MissingFolder_IsReportedWithTheHostsCode)
{
    const Json json = runForJson({"new", "missing/plan.qedb"}, 1);
    EXPECT_EQ(json["drawingVersion"], nullptr);
    EXPECT_EQ(json["result"], 54);
    EXPECT_EQ(json["error"]["code"], 54);
    EXPECT_EQ(json["error"]["name"], "eFileWriteFailed");
    EXPECT_THAT(json["error"]["message"].get<std::string>(), testing::StartsWith("eFileWriteFailed (54): "));
}

TEST_F(NewCommand, NameBeginningWithADash_IsAcceptedAfterTwoDashes)
{
    expectResult(run({"new", "-q", "--", "-plan.qedb"}), 0, "", "");
    EXPECT_EQ(files(), std::vector<std::string>{"-plan.qedb"});
}

TEST_F(NewCommand, CommandNameAfterTheCommand_IsAFile)
{
    expectResult(run({"new", "-q", "clear", "new"}), 0, "", "");
    EXPECT_EQ(files(), (std::vector<std::string>{"clear", "new"}));
}

TEST_F(NewCommand, NameInBrackets_IsOneFile)
{
    expectResult(run({"new", "-q", "[a,b]"}), 0, "", "");
    EXPECT_EQ(files(), std::vector<std::string>{"[a,b]"});
}

TEST_F(NewCommand, DashAsFile_PrintsTheDrawing)
{
    givenDrawing("plan.qedb", 25);
    const ProgramResult result = run({"new", "--drawing-version", "25", "-"});
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(drawingFromBytes(result.output), drawing("plan.qedb"));
}

TEST_F(NewCommand, DashAsFileWithJson_IsWrongUsage)
{
    expectWrongUsageAsJson(run({"new", "-", "--json"}),
                           "orvelcs: new: -: the drawing itself goes to standard output, where --json has no place");
}

} // namespace
} // namespace Tests
