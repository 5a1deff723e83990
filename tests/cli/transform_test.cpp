#include <algorithm>

#include "command_line_test.h"

namespace Tests {
namespace {

class TransformCommand : public CommandLineTest {
protected:
    void givenConfiguredDrawing(const std::string& source, const std::string& target, const std::string& name,
                                const std::string& type) const
    {
        givenDrawing("plan.qedb");
        const std::string item = "<Item><Version>1.0</Version><SourceCs>" + source + "</SourceCs><TargetCs>" + target +
                                 "</TargetCs><Name>" + name + "</Name><Type>" + type + "</Type><Note></Note></Item>";
        ASSERT_EQ(run({"forms", "plan.qedb", "--quiet", "--put", "config=" + item}).status, 0);
    }
    ProgramResult configured(const std::string& source, const std::string& target, const std::string& points) const
    {
        return run({"transform", source, target, "--drawing", "plan.qedb"}, points);
    }
    /// UTM 32N from its own geographic system: no datum comes into it.
    ProgramResult projected(const std::string& points, std::vector<std::string> options = {}) const
    {
        std::vector<std::string> arguments = {"transform", "EPSG:4258", "EPSG:25832", "--quiet"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return run(std::move(arguments), points);
    }
};

TEST_F(TransformCommand, EachPointIsALine)
{
    expectResult(projected("0 9\n0 9 12.5\n"), 0, "500000.000000 0.000000\n500000.000000 0.000000 12.500000\n", "");
}

TEST_F(TransformCommand, AnglesHaveTenDecimals)
{
    expectResult(run({"transform", "-q", "EPSG:25832", "EPSG:4258"}, "500000 0\n"), 0, "0.0000000000 9.0000000000\n",
                 "");
}

TEST_F(TransformCommand, Json_IsOneObject)
{
    constexpr const char* kTail = R"("operations": [
    {
      "code": "EPSG:16032",
      "name": "UTM zone 32N",
      "accuracy": 0.0,
      "ballpark": false,
      "timeDependent": false,
      "points": 2
    }
  ],
  "missingGrids": [],
  "network": false,
  "epochMissing": false
}
)";
    expectResult(projected("0 9\nnonsense\n0 9 1\n", {"--json"}), 1,
                 std::string("{\n  \"source\": \"EPSG:4258\",\n  \"target\": \"EPSG:25832\",\n"
                             "  \"configured\": false,\n  \"points\": [\n    [500000.000000, 0.000000],\n    null,\n"
                             "    [500000.000000, 0.000000, 1.000000]\n  ],\n  ") +
                     kTail,
                 "orvelcs: transform: line 2: expected 2 to 4 numbers, found \"nonsense\"\n"
                 "orvelcs: transform: standard input: 1 of 3 points could not be transformed\n");
    const Json empty = Json::parse(projected("", {"--json"}).output);
    EXPECT_EQ(empty["points"], Json::array());
    EXPECT_EQ(empty["operations"][0]["points"], 0);
}

TEST_F(TransformCommand, NoPoints_GiveNothing)
{
    expectResult(projected(""), 0, "", "");
}

TEST_F(TransformCommand, EmptyLinesAndComments_AreSkippedButCounted)
{
    const ProgramResult result = projected("# x y\n\n  \t\n0 9\n  # more\nfoo\n");
    EXPECT_EQ(result.output, "500000.000000 0.000000\n*\n");
    EXPECT_THAT(result.errors, testing::HasSubstr("transform: line 6: expected 2 to 4 numbers, found \"foo\""));
    EXPECT_THAT(result.errors, testing::HasSubstr("1 of 2 points could not be transformed"));
}

TEST_F(TransformCommand, BlanksLineEndsAndAByteOrderMarkDoNotMatter)
{
    expectResult(projected("\xEF\xBB\xBF+0\t  9e0 \r\n 0.0 9."), 0, "500000.000000 0.000000\n500000.000000 0.000000\n",
                 "");
}

TEST_F(TransformCommand, WhatIsNoPoint_IsAnsweredWithAnAsterisk)
{
    for (const std::string line : {"0", "0 9 1 2", "0,9", "0 9x", "0 nan", "inf 9", "1e999 9", "0x0 9", "+-0 9",
                                   "0 9 z", "zero nine", "--1 9", "0 9 1 2020 3", "0 9 1 z"}) {
        const ProgramResult result = projected(line + "\n0 9\n");
        EXPECT_EQ(result.status, 1) << line;
        EXPECT_EQ(result.output, "*\n500000.000000 0.000000\n") << line;
    }
}

TEST_F(TransformCommand, ALineWithoutAPoint_IsToldWithWhatItHolds)
{
    const auto toldOf = [this](const std::string& line) {
        const std::string errors = projected(line + "\n").errors;
        return errors.substr(0, errors.find('\n'));
    };
    const std::string expected = "orvelcs: transform: line 1: expected 2 to 4 numbers, found ";
    EXPECT_EQ(toldOf("0"), expected + "1");
    EXPECT_EQ(toldOf("0 9 1 2020 2"), expected + "5");
    EXPECT_EQ(toldOf("0 nine"), expected + "\"nine\"");
    EXPECT_EQ(toldOf("0 " + std::string(39, 'x') + "\xC3\xA9"), expected + '"' + std::string(39, 'x') + '"');
}

TEST_F(TransformCommand, ALineTooLong_IsNoPoint)
{
    const ProgramResult result = projected("0 9" + std::string(5000, ' ') + "\n0 9\n");
    EXPECT_EQ(result.output, "*\n500000.000000 0.000000\n");
    EXPECT_THAT(result.errors, testing::HasSubstr("line 1: longer than 4096 bytes"));
}

// The program reads 64 KB at once.
TEST_F(TransformCommand, WhereLinesLieInTheInput_DoesNotMatter)
{
    constexpr std::size_t kBlock = std::size_t{64} * 1024;
    const std::string lines = "0 9\n0 9z\r\n1e999 9\n0 9 5\r\n";
    for (std::size_t before = kBlock - lines.size(); before <= kBlock + 1; before += 3) {
        std::string comments;
        while (comments.size() < before)
            comments += std::string(std::min<std::size_t>(before - comments.size(), 1000) - 1, '#') + "\n";
        const ProgramResult result = projected(comments + lines);
        EXPECT_EQ(result.output, "500000.000000 0.000000\n*\n*\n500000.000000 0.000000 5.000000\n") << before;
        EXPECT_THAT(result.errors, testing::HasSubstr("line 68: expected 2 to 4 numbers, found \"9z\"\n")) << before;
    }
}

TEST_F(TransformCommand, APointOutsideOfTheDomain_FailsAlone)
{
    const ProgramResult result = projected("95 9\n0 9\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "*\n500000.000000 0.000000\n");
    EXPECT_THAT(result.errors, testing::HasSubstr("transform: line 1: "));
}

TEST_F(TransformCommand, NothingConfigured_IsNotedWithWhatIsUsed)
{
    const ProgramResult result = run({"transform", "EPSG:4807", "EPSG:4326"}, "");
    expectResult(result, 0, "",
                 "orvelcs: transform: EPSG:4807 to EPSG:4326: note: no transformation is configured; PROJ uses "
                 "EPSG:8094 NTF (Paris) to WGS 84 (1), accuracy 2 m\n");
    expectResult(run({"transform", "--quiet", "EPSG:4807", "EPSG:4326"}, ""), 0, "", "");
}

TEST_F(TransformCommand, DatumsTakenForEqual_AreNotedEvenWhenQuiet)
{
    const std::string line = "orvelcs: transform: EPSG:4230 to EPSG:4283: note: no transformation is configured; PROJ "
                             "uses Ballpark geographic offset from ED50 to GDA94, accuracy unknown; it is a ballpark "
                             "one, which takes datums for equal\n";
    expectResult(run({"transform", "EPSG:4230", "EPSG:4283"}, ""), 0, "", line);
    expectResult(run({"transform", "EPSG:4230", "EPSG:4283", "-q"}, ""), 0, "", line);
}

TEST_F(TransformCommand, Configured_IsUsedForwardAndInReverseWithoutANote)
{
    givenConfiguredDrawing("EPSG:4275", "EPSG:4326", "NTF to WGS 84 (1)", "2");
    const ProgramResult there = configured("EPSG:4275", "EPSG:4326", "48 2\n");
    expectResult(there, 0, "47.9999346059 1.9992750467\n", "");
    const ProgramResult back = configured("EPSG:4326", "EPSG:4275", there.output);
    EXPECT_EQ(back.status, 0);
    EXPECT_EQ(back.errors, "");
    EXPECT_EQ(back.output.substr(0, 9), "48.000000");
}

TEST_F(TransformCommand, Configured_IsToldInJsonAndTakesEpochs)
{
    givenConfiguredDrawing("EPSG:9000", "EPSG:7844", "ITRF2014 to GDA2020 (1)", "2");
    const auto document = [this](const std::string& points, std::vector<std::string> options) {
        std::vector<std::string> arguments = {"transform", "EPSG:9000", "EPSG:7844",
                                              "--drawing", "plan.qedb", "--json"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return Json::parse(run(std::move(arguments), points).output);
    };
    const Json without = document("-30 130\n", {});
    EXPECT_EQ(without["configured"], true);
    EXPECT_EQ(without["operations"][0]["code"], "EPSG:8049");
    EXPECT_EQ(without["operations"][0]["timeDependent"], true);
    EXPECT_EQ(without["operations"][0]["points"], 1);
    EXPECT_EQ(without["missingGrids"], Json::array());
    EXPECT_EQ(without["epochMissing"], true);
    const Json in2030 = document("-30 130\n", {"--epoch", "2030"});
    EXPECT_EQ(in2030["epochMissing"], false);
    EXPECT_NE(in2030["points"], without["points"]);
    EXPECT_EQ(document("-30 130\n", {"--epoch", "2020"})["points"], without["points"]);
}

TEST_F(TransformCommand, Configured_ThatDoesNotFit_IsRefused)
{
    givenConfiguredDrawing("EPSG:4230", "EPSG:4326", "NTF to WGS 84 (1)", "2");
    expectResult(configured("EPSG:4230", "EPSG:4326", "48 2\n"), 1, "",
                 "orvelcs: transform: EPSG:1193: leads from EPSG:4275 (NTF) to EPSG:4326 (WGS 84), and so does not fit "
                 "between EPSG:4230 (ED50) and EPSG:4326 (WGS 84)\n");
}

TEST_F(TransformCommand, Configured_WithAnUnknownName_IsRefused)
{
    givenConfiguredDrawing("EPSG:4230", "EPSG:4326", "ED50 to Atlantis (1)", "2");
    expectResult(configured("EPSG:4230", "EPSG:4326", "48 2\n"), 1, "",
                 "orvelcs: transform: ED50 to Atlantis (1): the catalog has no such transformation\n");
}

TEST_F(TransformCommand, Configured_WithANameThatSeveralHave_IsRefusedWithThem)
{
    const std::string name = "NKG_ETRF14 to ETRF93@2000.0";
    givenConfiguredDrawing("EPSG:9069", "EPSG:4258", name, "2");
    const ProgramResult result = configured("EPSG:9069", "EPSG:4258", "60 10\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, testing::StartsWith("orvelcs: transform: " + name + ": "));
    const auto noted = run({"config", "add", "--source", "A", "--target", "B", "--name", name, "--type",
                            "transformation", "--drawing", "plan.qedb"});
    EXPECT_EQ(noted.status, 0);
    EXPECT_THAT(noted.errors, testing::HasSubstr("several have this name: "));
}

TEST_F(TransformCommand, ConfiguredTheOtherWayRound_IsFoundOnlyWhereItMayBeReversed)
{
    givenConfiguredDrawing("EPSG:4979", "EPSG:3855", "WGS 84 to EGM2008 height (2)", "2");
    EXPECT_EQ(run({"transformation", "EPSG:4979", "EPSG:3855", "--drawing", "plan.qedb"}).status, 0);
    EXPECT_EQ(run({"transformation", "EPSG:3855", "EPSG:4979", "--drawing", "plan.qedb"}).status, 3);
    std::filesystem::remove(path("plan.qedb"));
    givenConfiguredDrawing("EPSG:4275", "EPSG:4326", "NTF to WGS 84 (1)", "2");
    EXPECT_EQ(run({"transformation", "EPSG:4326", "EPSG:4275", "--drawing", "plan.qedb"}).status, 0);
}

TEST_F(TransformCommand, Configured_WithoutItsGrid_IsRefusedWithTheGridsName)
{
    const Json list = runForJson({"transformation", "list", "EPSG:4314", "EPSG:4258"});
    const auto missing = std::find_if(list.begin(), list.end(), [](const Json& one) {
        return !one["grids"].empty() && one["grids"][0]["available"] == false;
    });
    if (missing == list.end())
        GTEST_SKIP() << "every grid is installed";
    givenConfiguredDrawing("EPSG:4314", "EPSG:4258", (*missing)["code"], "2");
    const ProgramResult result = configured("EPSG:4314", "EPSG:4258", "52 9\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors,
                testing::HasSubstr("needs the grid " + (*missing)["grids"][0]["name"].get<std::string>() +
                                   ", which is not installed"));
}

TEST_F(TransformCommand, AMisspeltCode_IsRefusedWithTheNearest)
{
    const ProgramResult result = run({"transform", "EPSG:4326", "EPSG:48078", "--json"}, "48 2\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "null\n");
    EXPECT_THAT(result.errors, testing::StartsWith("orvelcs: transform: EPSG:48078: the catalog has no such code; the "
                                                   "nearest are EPSG:4807"));
}

TEST_F(TransformCommand, ALocalPlane_IsRefused)
{
    expectResult(run({"transform", "LOCAL:METRE", "EPSG:4326"}, "1 2\n"), 1, "",
                 "orvelcs: transform: LOCAL:METRE: is not referenced to the Earth, so nothing leads from or to it\n");
}

TEST_F(TransformCommand, PointsAndDrawingOnStandardInput_AreWrongUsage)
{
    expectWrongUsage(run({"transform", "EPSG:4326", "EPSG:25832", "--drawing", "-", "--json"}, "1 2\n"),
                     "orvelcs: transform: --drawing: standard input holds the points");
}

TEST_F(TransformCommand, AReaderThatGoesAway_EndsIt)
{
    ProgramRun programRun;
    programRun.arguments = {"transform", "--quiet", "EPSG:4258", "EPSG:25832"};
    programRun.input = "0 9\n";
    programRun.target = OutputTarget::closedPipe;
    const ProgramResult result = run(programRun);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "orvelcs: transform: standard output: cannot be written: Broken pipe\n");
}

} // namespace
} // namespace Tests
