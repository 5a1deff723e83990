// transform with files, in reverse, with longitudes first, with angles, and with many points that fail.
#include <proj.h>

#include <array>
#include <iomanip>
#include <memory>
#include <sstream>

#include "command_line_test.h"

namespace Tests {
namespace {

using testing::HasSubstr;
using testing::Not;

class TransformOption : public CommandLineTest {
protected:
    ProgramResult transform(const Arguments& arguments, const std::string& input = "") const
    {
        return run(concatenate({"transform", "-q"}, arguments), input);
    }
    static std::string lines(const std::string& line, int count)
    {
        std::string text;
        for (int index = 0; index < count; ++index)
            text += line + '\n';
        return text;
    }
};

TEST_F(TransformOption, PointsOfAFile_AreTransformed)
{
    given("points", "0 9\n");
    expectResult(transform({"EPSG:4258", "EPSG:25832", "points"}), 0, "500000.000000 0.000000\n", "");
    expectResult(transform({"EPSG:4258", "EPSG:25832", "-"}, "0 9\n"), 0, "500000.000000 0.000000\n", "");
    given("empty", "");
    expectResult(transform({"EPSG:4258", "EPSG:25832", "empty"}), 0, "", "");
    given("wrong", "0 9\nx\n");
    expectResult(transform({"EPSG:4258", "EPSG:25832", "wrong"}), 1, "500000.000000 0.000000\n*\n",
                 HasSubstr("transform: wrong: 1 of 2 points could not be transformed\n"));
}

TEST_F(TransformOption, FileThatCannotBeRead_IsNamed)
{
    expectResult(transform({"EPSG:4258", "EPSG:25832", "none"}), 1, "",
                 "orvelcs: transform: none: cannot be opened: No such file or directory\n");
    std::filesystem::create_directory(path("folder"));
    expectResult(transform({"EPSG:4258", "EPSG:25832", "folder"}), 1, "", "orvelcs: transform: folder: is a folder\n");
    const ProgramResult result = transform({"EPSG:4258", "EPSG:25832", "none", "--json"});
    EXPECT_EQ(errorLine(Json::parse(result.output)["error"]), result.errors);
}

TEST_F(TransformOption, PointsOfAFile_LeaveStandardInputToASystem)
{
    given("points", "500000 5000000\n");
    EXPECT_EQ(transform({"@-", "EPSG:32632", "points"}, "+proj=utm +zone=32 +datum=WGS84 +type=crs").output,
              "500000.000000 5000000.000000\n");
    expectWrongUsage(transform({"@-", "EPSG:25832"}), "orvelcs: transform: @-: standard input holds the points");
}

TEST_F(TransformOption, ResultsGoIntoAFileThatIsNotOverwritten)
{
    const Arguments arguments = {"EPSG:4258", "EPSG:25832", "-o", "results"};
    expectResult(run(concatenate({"transform"}, arguments), "0 9\n0 9\n"), 0, "results: 2 of 2 points transformed\n",
                 HasSubstr("note"));
    EXPECT_EQ(contents("results"), "500000.000000 0.000000\n500000.000000 0.000000\n");
    expectResult(transform(arguments, "0 9 1\n"), 1, "",
                 "orvelcs: transform: results: exists; --force overwrites it\n");
    EXPECT_EQ(contents("results"), "500000.000000 0.000000\n500000.000000 0.000000\n");
    expectResult(transform(concatenate(arguments, {"--force"}), "0 9 1\n"), 0, "", "");
    EXPECT_EQ(contents("results"), "500000.000000 0.000000 1.000000\n");
    EXPECT_EQ(transform({"EPSG:4258", "EPSG:25832", "-o", "-"}, "0 9\n").output, "500000.000000 0.000000\n");
    EXPECT_EQ(files(), std::vector<std::string>{"results"});
}

TEST_F(TransformOption, FileOfPoints_CanBeReplacedByItsResults)
{
    given("points", lines("0 9", 20000));
    expectResult(transform({"EPSG:4258", "EPSG:25832", "points", "-o", "points", "--force"}), 0, "", "");
    EXPECT_EQ(contents("points"), lines("500000.000000 0.000000", 20000));
}

TEST_F(TransformOption, ResultsOfPointsThatFail_AreWritten_ButNotThoseOfAnUnreadableTable)
{
    expectResult(transform({"EPSG:4258", "EPSG:25832", "-o", "results"}, "0 9\nx\n"), 1, "",
                 HasSubstr("1 of 2 points could not be transformed"));
    EXPECT_EQ(contents("results"), "500000.000000 0.000000\n*\n");
    const Arguments arguments = {"EPSG:4258", "EPSG:25832", "--columns", "lat,lon"};
    expectResult(transform(concatenate(arguments, {"-o", "others"}), "a b\n"), 1, "", HasSubstr("no such column"));
    expectResult(transform(concatenate(arguments, {"-o", "results", "--force"}), "a b\n"), 1, "",
                 HasSubstr("no such column"));
    EXPECT_EQ(contents("results"), "500000.000000 0.000000\n*\n");
    EXPECT_EQ(files(), std::vector<std::string>{"results"});
}

TEST_F(TransformOption, FolderThatCannotBeWrittenTo_IsNamedBeforePointsAreRead)
{
    expectResult(transform({"EPSG:4258", "EPSG:25832", "-o", "none/results"}, "0 9\n"), 1, "",
                 HasSubstr("orvelcs: transform: none/results: eFileWriteFailed "));
    std::filesystem::create_directory(path("folder"));
    expectResult(transform({"EPSG:4258", "EPSG:25832", "-o", "folder", "--force"}, "0 9\n"), 1, "",
                 HasSubstr("orvelcs: transform: folder: eFileWriteFailed "));
}

TEST_F(TransformOption, JsonBesideAFile_SaysWhatWasUsed)
{
    const ProgramResult result = transform({"EPSG:4258", "EPSG:25832", "-o", "results", "--json"}, "0 9\nx\n");
    EXPECT_EQ(contents("results"), "500000.000000 0.000000\n*\n");
    const Json document = Json::parse(result.output);
    EXPECT_EQ(document["output"], "results");
    EXPECT_EQ(document["points"], nullptr);
    EXPECT_EQ(document["operations"][0]["points"], 1);
    EXPECT_EQ(document["failed"], 1);
    EXPECT_EQ(document["failures"], Json::array({{{"line", 2}, {"message", "expected 2 to 4 numbers, found \"x\""}}}));
}

TEST_F(TransformOption, Inverse_GoesFromTheTargetToTheSource)
{
    const std::string points = "500000 0 1\n600000 5500000 2\n";
    EXPECT_EQ(transform({"EPSG:4258", "EPSG:25832", "--inverse"}, points).output,
              transform({"EPSG:25832", "EPSG:4258"}, points).output);
    EXPECT_EQ(transform({"EPSG:4258", "EPSG:25832", "--inverse"}, "500000 0\n").output, "0.0000000000 9.0000000000\n");
    const ProgramResult result = run({"transform", "EPSG:4258", "EPSG:25832", "--inverse", "--json"}, "500000 0\n");
    const Json document = Json::parse(result.output);
    EXPECT_EQ(document["source"], "EPSG:25832");
    EXPECT_EQ(document["target"], "EPSG:4258");
    EXPECT_THAT(result.errors, HasSubstr("transform: EPSG:25832 to EPSG:4258: note: "));
}

TEST_F(TransformOption, Inverse_UsesWhatIsConfiguredInThatDirection)
{
    givenConfiguredDrawing("plan.qedb", configurationItem("EPSG:4275", "EPSG:4326", "NTF to WGS 84 (1)", 2));
    const auto configured = [this](const Arguments& arguments) {
        const Json document =
            Json::parse(transform(concatenate(arguments, {"--drawing", "plan.qedb", "--json"}), "48 2\n").output);
        EXPECT_EQ(document["configured"], true);
        return document["points"];
    };
    EXPECT_EQ(configured({"EPSG:4326", "EPSG:4275", "--inverse"}), configured({"EPSG:4275", "EPSG:4326"}));
    EXPECT_EQ(configured({"EPSG:4275", "EPSG:4326", "--inverse"}), configured({"EPSG:4326", "EPSG:4275"}));
}

TEST_F(TransformOption, LongitudeFirst_ExchangesLatitudesAndNorthingsAlone)
{
    EXPECT_EQ(transform({"EPSG:4258", "EPSG:25832", "--lonlat"}, "9 0\n").output, "500000.000000 0.000000\n");
    EXPECT_EQ(transform({"EPSG:4258", "EPSG:25832", "--lonlat", "--inverse"}, "500000 0\n").output,
              "9.0000000000 0.0000000000\n");
    EXPECT_EQ(transform({"EPSG:4326", "EPSG:4979", "--lonlat"}, "9 50 5\n").output,
              "9.0000000000 50.0000000000 5.000000\n");
    EXPECT_EQ(transform({"EPSG:4979", "EPSG:4978", "--lonlat"}, "90 0 0\n").output,
              "0.000000 6378137.000000 0.000000\n");
    EXPECT_EQ(transform({"EPSG:4258", "EPSG:25832", "--lonlat", "--delimiter", ",", "--columns", "lat,lon"},
                        "id,lat,lon\na,9,0\n") // the names say nothing about the order
                  .output,
              "id,lat,lon\na,500000.000000,0.000000\n");
    EXPECT_EQ(transform({"EPSG:4258", "EPSG:4258", "--lonlat", "--json"}, "9 50\n").output.find("[50"),
              std::string::npos);
}

/// What PROJ's own call for a display gives, as lines.
std::string normalizedByProj(const std::string& source, const std::string& target, double x, double y)
{
    using ProjObjectHolder = std::unique_ptr<PJ, decltype(&proj_destroy)>;
    const ProjObjectHolder pair(proj_create_crs_to_crs(PJ_DEFAULT_CTX, source.c_str(), target.c_str(), nullptr),
                                &proj_destroy);
    const ProjObjectHolder normalized(proj_normalize_for_visualization(PJ_DEFAULT_CTX, pair.get()), &proj_destroy);
    const PJ_COORD result = proj_trans(normalized.get(), PJ_FWD, proj_coord(x, y, 0, HUGE_VAL));
    std::ostringstream text;
    text << std::fixed << std::setprecision(4) << result.v[0] << ' ' << result.v[1];
    return text.str();
}

TEST_F(TransformOption, LongitudeFirst_IsTheOrderThatProjHasForDisplays)
{
    struct Case {
        const char* source;
        const char* target;
        double x, y;
    };
    for (const Case& one : {Case{"EPSG:4326", "EPSG:2193", 174.8, -41.3}, Case{"EPSG:4326", "EPSG:2053", 30.9, -29.9},
                            Case{"EPSG:4326", "EPSG:32661", 30, 85}, Case{"EPSG:4326", "EPSG:32761", 30, -85},
                            Case{"EPSG:4326", "EPSG:3413", -45, 80}, Case{"EPSG:4326", "EPSG:31467", 9, 50},
                            Case{"EPSG:4326", "EPSG:3844", 25, 46}, Case{"EPSG:4267", "EPSG:2263", -74, 40.7},
                            Case{"EPSG:4807", "EPSG:27572", 1, 54}, Case{"EPSG:2193", "EPSG:4326", 1749000, 5427000}}) {
        const std::string points = std::to_string(one.x) + ' ' + std::to_string(one.y) + '\n';
        std::istringstream ours(transform({one.source, one.target, "--lonlat"}, points).output);
        double x = 0;
        double y = 0;
        ours >> x >> y;
        std::ostringstream text;
        text << std::fixed << std::setprecision(4) << x << ' ' << y;
        EXPECT_EQ(text.str(), normalizedByProj(one.source, one.target, one.x, one.y))
            << one.source << ' ' << one.target;
    }
}

TEST_F(TransformOption, DegreesMinutesAndSeconds_AreReadInGeographicSystems)
{
    for (const std::string point : {"52d30'15.5\"N 13d24'E", "52\u00B030'15.5\" 13\u00B024'", "52:30:15.5 13:24",
                                    "N52:30:15.5 E13.4", "+52d30'15.5 13.4E", "52.504305555555556 13.4"})
        EXPECT_EQ(transform({"EPSG:4326", "EPSG:4979"}, point + "\n").output, "52.5043055556 13.4000000000\n") << point;
    EXPECT_EQ(transform({"EPSG:4326", "EPSG:4979"}, "52:30S 13:24W 7\n").output,
              "-52.5000000000 -13.4000000000 7.000000\n");
    EXPECT_EQ(transform({"EPSG:4326", "EPSG:4979", "--lonlat"}, "13d24'W 52d30'N\n").output,
              "-13.4000000000 52.5000000000\n");
    EXPECT_EQ(transform({"EPSG:4807", "EPSG:4807"}, "45dN 9dW\n").output, "50.0000000000 -10.0000000000\n"); // grads
    EXPECT_EQ(transform({"EPSG:4326", "EPSG:4979", "--delimiter", ",", "--columns", "1,2"},
                        "52\u00B0 30' N,\"13\u00B024'0\"\"E\",x\n")
                  .output,
              "52.5000000000,13.4000000000,x\n");
}

TEST_F(TransformOption, WrongAngles_AreRefusedWithTheReason)
{
    const auto reason = [this](const std::string& system, const std::string& line) {
        const ProgramResult result = transform({system, "EPSG:4979"}, line + "\n");
        EXPECT_EQ(result.status, 1) << line;
        EXPECT_EQ(result.output, "*\n") << line;
        return result.errors.substr(0, result.errors.find('\n'));
    };
    const std::string begin = "orvelcs: transform: line 1: expected ";
    EXPECT_EQ(reason("EPSG:4326", "13d24'E 52d30'N"), begin + "a latitude (N or S), found \"13d24'E\"");
    EXPECT_EQ(reason("EPSG:4326", "52N 13N"), begin + "a longitude (E or W), found \"13N\"");
    EXPECT_EQ(reason("EPSG:4326", "52d60'N 13"),
              begin + "an angle such as 52d30'15.5\"N or 52:30:15.5, found \"52d60'N\"");
    EXPECT_EQ(reason("EPSG:4326", "-52:30N 13"),
              begin + "an angle such as 52d30'15.5\"N or 52:30:15.5, found \"-52:30N\"");
    EXPECT_EQ(reason("EPSG:4326", "52 13 5d"), begin + "2 to 4 numbers, found \"5d\"");
    EXPECT_EQ(reason("EPSG:25832", "500000 52d30'"), begin + "2 to 4 numbers, found \"52d30'\"");
}

TEST_F(TransformOption, ManyPointsThatFail_AreCountedAfterTheFirstTwenty)
{
    const std::string points = lines("0 9", 3) + lines("x", 500) + lines("95 9", 500);
    const ProgramResult result = transform({"EPSG:4258", "EPSG:25832"}, points);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, lines("500000.000000 0.000000", 3) + lines("*", 1000));
    std::string expected;
    for (int line = 4; line < 24; ++line)
        expected += "orvelcs: transform: line " + std::to_string(line) + ": expected 2 to 4 numbers, found \"x\"\n";
    EXPECT_EQ(result.errors, expected + "orvelcs: transform: standard input: 1000 of 1003 points could not be "
                                        "transformed; --verbose prints the reasons of the other 980, too\n");
    const std::string all = transform({"EPSG:4258", "EPSG:25832", "--verbose"}, points).errors;
    EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 1001);
    EXPECT_THAT(all, HasSubstr("line 1003: not a place on the Earth, such as a latitude beyond 90 degrees\n"));
    EXPECT_THAT(all, Not(HasSubstr("--verbose")));
    const Json document = Json::parse(transform({"EPSG:4258", "EPSG:25832", "--json"}, points).output);
    EXPECT_EQ(document["failed"], 1000);
    EXPECT_EQ(document["failures"].size(), 20U);
    EXPECT_EQ(document["failures"][19]["line"], 23);
    EXPECT_EQ(document["points"].size(), 1003U);
}

} // namespace
} // namespace Tests
