#include <algorithm>

#include "command_line_test.h"

namespace Tests {
namespace {

class TransformCommand : public CommandLineTest {
protected:
    void givenConfiguration(const std::string& source, const std::string& target, const std::string& name) const
    {
        givenConfiguredDrawing("plan.qedb", configurationItem(source, target, name, 2));
    }
    ProgramResult transformWithDrawing(const std::string& source, const std::string& target,
                                       const std::string& points) const
    {
        return run({"transform", source, target, "--drawing", "plan.qedb"}, points);
    }
    /// Transforms from ETRS89 to UTM 32N, which has the same datum.
    ProgramResult project(const std::string& points, const Arguments& options = {}) const
    {
        return run(concatenate({"transform", "EPSG:4258", "EPSG:25832", "--quiet"}, options), points);
    }
};

TEST_F(TransformCommand, EachPoint_IsPrintedOnALine)
{
    expectResult(project("0 9\n0 9 12.5\n"), 0, "500000.000000 0.000000\n500000.000000 0.000000 12.500000\n", "");
}

TEST_F(TransformCommand, Angles_HaveTenDecimals)
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
  "epochMissing": false,
  "failed": 1,
  "failures": [
    {
      "line": 2,
      "message": "expected 2 to 4 numbers, found \"nonsense\""
    }
  ]
}
)";
    expectResult(project("0 9\nnonsense\n0 9 1\n", {"--json"}), 1,
                 std::string("{\n  \"source\": \"EPSG:4258\",\n  \"target\": \"EPSG:25832\",\n"
                             "  \"configured\": false,\n  \"output\": null,\n  \"points\": [\n    [500000.000000, "
                             "0.000000],\n    null,\n"
                             "    [500000.000000, 0.000000, 1.000000]\n  ],\n  ") +
                     kTail,
                 "orvelcs: transform: line 2: expected 2 to 4 numbers, found \"nonsense\"\n"
                 "orvelcs: transform: standard input: 1 of 3 points could not be transformed\n");
    const Json empty = Json::parse(project("", {"--json"}).output);
    EXPECT_EQ(empty["points"], Json::array());
    EXPECT_EQ(empty["operations"][0]["points"], 0);
}

TEST_F(TransformCommand, EmptyInput_PrintsNothing)
{
    expectResult(project(""), 0, "", "");
}

TEST_F(TransformCommand, EmptyLinesAndComments_StayInTheirPlaces)
{
    const ProgramResult result = project("# x y\r\n\n  \t\n0 9\n  # \xFF more\nfoo\n");
    EXPECT_EQ(result.output, "# x y\n\n  \t\n500000.000000 0.000000\n  # \xFF more\n*\n");
    EXPECT_THAT(result.errors, testing::HasSubstr("transform: line 6: expected 2 to 4 numbers, found \"foo\""));
    EXPECT_THAT(result.errors, testing::HasSubstr("1 of 2 points could not be transformed"));
}

TEST_F(TransformCommand, BlanksLineEndsAndAByteOrderMark_AreIgnored)
{
    expectResult(project("\xEF\xBB\xBF+0\t  9e0 \r\n 0.0 9."), 0, "500000.000000 0.000000\n500000.000000 0.000000\n",
                 "");
}

TEST_F(TransformCommand, LineThatIsNotAPoint_PrintsAnAsterisk)
{
    for (const std::string line : {"0", "0 9 1 2", "0,9", "0 9x", "0 nan", "inf 9", "1e999 9", "0x0 9", "+-0 9",
                                   "0 9 z", "zero nine", "--1 9", "0 9 1 2020 3", "0 9 1 z"}) {
        const ProgramResult result = project(line + "\n0 9\n");
        EXPECT_EQ(result.status, 1) << line;
        EXPECT_EQ(result.output, "*\n500000.000000 0.000000\n") << line;
    }
}

TEST_F(TransformCommand, LineThatIsNotAPoint_IsReportedWithItsContent)
{
    const auto firstError = [this](const std::string& line) {
        const std::string errors = project(line + "\n").errors;
        return errors.substr(0, errors.find('\n'));
    };
    const std::string expected = "orvelcs: transform: line 1: expected 2 to 4 numbers, found ";
    EXPECT_EQ(firstError("0"), expected + "1");
    EXPECT_EQ(firstError("0 9 1 2020 2"), expected + "5");
    EXPECT_EQ(firstError("0 nine"), expected + "\"nine\"");
    EXPECT_EQ(firstError("0 " + std::string(39, 'x') + "\xC3\xA9"), expected + '"' + std::string(39, 'x') + "…\"");
}

TEST_F(TransformCommand, OverlongLine_IsNotAPoint)
{
    constexpr std::size_t kMost = std::size_t{1} << 20;
    const std::string longest = "0 9" + std::string(kMost - 3, ' ');
    const ProgramResult result = project(longest + " \n" + longest + "\n#" + longest + "\n");
    EXPECT_EQ(result.output, "*\n500000.000000 0.000000\n*\n");
    EXPECT_THAT(result.errors, testing::HasSubstr("line 1: longer than 1048576 bytes"));
    EXPECT_THAT(result.errors, testing::HasSubstr("line 3: longer than 1048576 bytes"));
}

// The program reads 64 KB at once.
TEST_F(TransformCommand, LinesAcrossTheBordersOfBlocks_AreReadWhole)
{
    constexpr std::size_t kBlock = std::size_t{64} * 1024;
    const std::string lines = "0 9\n0 9z\r\n1e999 9\n0 9 5\r\n";
    for (std::size_t before = kBlock - lines.size(); before <= kBlock + 1; before += 3) {
        std::string comments;
        while (comments.size() < before)
            comments += std::string(std::min<std::size_t>(before - comments.size(), 1000) - 1, '#') + "\n";
        const ProgramResult result = project(comments + lines);
        EXPECT_EQ(result.output, comments + "500000.000000 0.000000\n*\n*\n500000.000000 0.000000 5.000000\n")
            << before;
        EXPECT_THAT(result.errors, testing::HasSubstr("line 68: expected 2 to 4 numbers, found \"9z\"\n")) << before;
    }
}

TEST_F(TransformCommand, PointOutsideTheDomain_DoesNotAffectTheOthers)
{
    const ProgramResult result = project("95 9\n0 9\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "*\n500000.000000 0.000000\n");
    EXPECT_THAT(result.errors, testing::HasSubstr("transform: line 1: "));
}

TEST_F(TransformCommand, MissingConfiguration_IsNotedWithTheOperationThatIsUsed)
{
    const ProgramResult result = run({"transform", "EPSG:4807", "EPSG:4326"}, "");
    expectResult(result, 0, "",
                 "orvelcs: transform: EPSG:4807 to EPSG:4326: note: no transformation is configured; PROJ uses "
                 "EPSG:8094 NTF (Paris) to WGS 84 (1), accuracy 2 m\n");
    expectResult(run({"transform", "--quiet", "EPSG:4807", "EPSG:4326"}, ""), 0, "", "");
}

TEST_F(TransformCommand, BallparkOperation_IsNotedEvenWhenQuiet)
{
    const std::string line = "orvelcs: transform: EPSG:4230 to EPSG:4283: note: no transformation is configured; PROJ "
                             "uses Ballpark geographic offset from ED50 to GDA94, accuracy unknown; it is a ballpark "
                             "one, which takes datums for equal\n";
    expectResult(run({"transform", "EPSG:4230", "EPSG:4283"}, ""), 0, "", line);
    expectResult(run({"transform", "EPSG:4230", "EPSG:4283", "-q"}, ""), 0, "", line);
}

TEST_F(TransformCommand, ConfiguredTransformation_IsUsedInBothDirectionsWithoutANote)
{
    givenConfiguration("EPSG:4275", "EPSG:4326", "NTF to WGS 84 (1)");
    const ProgramResult forward = transformWithDrawing("EPSG:4275", "EPSG:4326", "48 2\n");
    expectResult(forward, 0, "47.9999346059 1.9992750467\n", "");
    const ProgramResult inverse = transformWithDrawing("EPSG:4326", "EPSG:4275", forward.output);
    EXPECT_EQ(inverse.status, 0);
    EXPECT_EQ(inverse.errors, "");
    EXPECT_EQ(inverse.output.substr(0, 9), "48.000000");
}

TEST_F(TransformCommand, ConfiguredTransformation_IsPrintedInJsonAndUsesEpochs)
{
    givenConfiguration("EPSG:9000", "EPSG:7844", "ITRF2014 to GDA2020 (1)");
    const auto transform = [this](const std::string& points, const Arguments& options) {
        const Arguments arguments = {"transform", "EPSG:9000", "EPSG:7844", "--drawing", "plan.qedb", "--json"};
        return Json::parse(run(concatenate(arguments, options), points).output);
    };
    const Json without = transform("-30 130\n", {});
    EXPECT_EQ(without["configured"], true);
    EXPECT_EQ(without["operations"][0]["code"], "EPSG:8049");
    EXPECT_EQ(without["operations"][0]["timeDependent"], true);
    EXPECT_EQ(without["operations"][0]["points"], 1);
    EXPECT_EQ(without["missingGrids"], Json::array());
    EXPECT_EQ(without["epochMissing"], true);
    const Json in2030 = transform("-30 130\n", {"--epoch", "2030"});
    EXPECT_EQ(in2030["epochMissing"], false);
    EXPECT_NE(in2030["points"], without["points"]);
    EXPECT_EQ(transform("-30 130\n", {"--epoch", "2020"})["points"], without["points"]);
}

TEST_F(TransformCommand, ConfiguredTransformationBetweenOtherSystems_IsRefused)
{
    givenConfiguration("EPSG:4230", "EPSG:4326", "NTF to WGS 84 (1)");
    expectResult(transformWithDrawing("EPSG:4230", "EPSG:4326", "48 2\n"), 1, "",
                 "orvelcs: transform: EPSG:1193: leads from EPSG:4275 (NTF) to EPSG:4326 (WGS 84), and so does not fit "
                 "between EPSG:4230 (ED50) and EPSG:4326 (WGS 84)\n");
}

TEST_F(TransformCommand, UnknownConfiguredName_IsRefused)
{
    givenConfiguration("EPSG:4230", "EPSG:4326", "Atlantis to Lemuria");
    expectResult(transformWithDrawing("EPSG:4230", "EPSG:4326", "48 2\n"), 1, "",
                 "orvelcs: transform: Atlantis to Lemuria: the catalog has no such transformation\n");
    std::filesystem::remove(path("plan.qedb"));
    givenConfiguration("EPSG:4230", "EPSG:4326", "ED50 to WSG 84 (1)");
    expectResult(transformWithDrawing("EPSG:4230", "EPSG:4326", "48 2\n"), 1, "",
                 testing::HasSubstr("the catalog has no such transformation; the nearest are EPSG:1133 (ED50 to WGS 84 "
                                    "(1)), "));
}

TEST_F(TransformCommand, AmbiguousConfiguredName_IsRefusedAndNotedByForcedConfigAdd)
{
    const std::string name = "NKG_ETRF14 to ETRF93@2000.0";
    givenConfiguration("EPSG:9069", "EPSG:4258", name);
    expectResult(transformWithDrawing("EPSG:9069", "EPSG:4258", "60 10\n"), 1, "",
                 testing::StartsWith("orvelcs: transform: " + name + ": "));
    expectResult(run({"config", "add", "--source", "A", "--target", "B", "--name", name, "--type", "transformation",
                      "--force", "--drawing", "plan.qedb"}),
                 0, "plan.qedb: item added\n", testing::HasSubstr("several have this name: "));
}

TEST_F(TransformCommand, ReverseOfAConfiguredTransformation_IsFoundOnlyIfReversible)
{
    givenConfiguration("EPSG:4979", "EPSG:3855", "WGS 84 to EGM2008 height (2)");
    EXPECT_EQ(run({"transformation", "EPSG:4979", "EPSG:3855", "--drawing", "plan.qedb"}).status, 0);
    EXPECT_EQ(run({"transformation", "EPSG:3855", "EPSG:4979", "--drawing", "plan.qedb"}).status, 3);
    std::filesystem::remove(path("plan.qedb"));
    givenConfiguration("EPSG:4275", "EPSG:4326", "NTF to WGS 84 (1)");
    EXPECT_EQ(run({"transformation", "EPSG:4326", "EPSG:4275", "--drawing", "plan.qedb"}).status, 0);
}

TEST_F(TransformCommand, ConfiguredTransformationWithoutItsGrid_IsRefusedWithTheGridName)
{
    const Json list = runForJson({"transformation", "list", "EPSG:4314", "EPSG:4258"});
    const auto missing = std::find_if(list.begin(), list.end(), [](const Json& operation) {
        return !operation["grids"].empty() && operation["grids"][0]["available"] == false;
    });
    if (missing == list.end())
        GTEST_SKIP() << "every grid is installed";
    givenConfiguration("EPSG:4314", "EPSG:4258", (*missing)["code"]);
    const ProgramResult result = transformWithDrawing("EPSG:4314", "EPSG:4258", "52 9\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors,
                testing::HasSubstr("needs the grid " + (*missing)["grids"][0]["name"].get<std::string>() +
                                   ", which is not installed"));
}

TEST_F(TransformCommand, MisspeltCode_IsRefusedWithTheNearestCodes)
{
    const ProgramResult result = run({"transform", "EPSG:4326", "EPSG:48078", "--json"}, "48 2\n");
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, testing::StartsWith("orvelcs: transform: EPSG:48078: the catalog has no such code; the "
                                                   "nearest are EPSG:4807"));
    EXPECT_EQ(errorLine(Json::parse(result.output)["error"]), result.errors);
}

TEST_F(TransformCommand, LocalPlane_IsRefused)
{
    expectResult(run({"transform", "LOCAL:METRE", "EPSG:4326"}, "1 2\n"), 1, "",
                 "orvelcs: transform: LOCAL:METRE: is not referenced to the Earth, so nothing leads from or to it\n");
}

TEST_F(TransformCommand, PointsAndDrawingOnStandardInput_AreWrongUsage)
{
    expectWrongUsageAsJson(run({"transform", "EPSG:4326", "EPSG:25832", "--drawing", "-", "--json"}, "1 2\n"),
                           "orvelcs: transform: --drawing: standard input holds the points");
}

TEST_F(TransformCommand, ClosedPipe_EndsTheProgram)
{
    ProgramRun programRun;
    programRun.arguments = {"transform", "--quiet", "EPSG:4258", "EPSG:25832"};
    programRun.input = "0 9\n";
    programRun.target = OutputTarget::closedPipe;
    expectResult(run(programRun), kClosedPipeStatus, "", "");
}

} // namespace
} // namespace Tests
