#include "command_line_test.h"

namespace Tests {
namespace {

using ShowCommand = CommandLineTest;

Json assignedSystem(const std::string& source)
{
    return {
        {"file", "plan.qedb"}, {"drawingVersion", 33}, {"code", "EPSG:25832"},     {"name", "ETRS89 / UTM zone 32N"},
        {"kind", 3},           {"datum", "EPSG:6258"}, {"ellipsoid", "EPSG:7019"}, {"knownToCatalog", true},
        {"source", source},    {"deprecated", false},  {"replacedBy", nullptr}};
}

Json noSystem(const std::string& file)
{
    return {{"file", file},      {"drawingVersion", 33},  {"code", nullptr},      {"name", nullptr},
            {"kind", nullptr},   {"datum", nullptr},      {"ellipsoid", nullptr}, {"knownToCatalog", nullptr},
            {"source", nullptr}, {"deprecated", nullptr}, {"replacedBy", nullptr}};
}

TEST_F(ShowCommand, AssignedSystem_IsPrintedAsJson)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    EXPECT_EQ(runForJson({"show", "plan.qedb"}), assignedSystem("geodata"));
}

TEST_F(ShowCommand, EachKind_IsPrintedWithItsName)
{
    for (const auto& [code, kind] :
         {std::pair{"LOCAL:METRE", "1 (not referenced to the Earth)"}, std::pair{"EPSG:4326", "2 (geographic)"},
          std::pair{"EPSG:4978", "4 (geocentric)"}}) {
        givenDrawingWith("plan.qedb", code);
        EXPECT_THAT(run({"show", "plan.qedb"}).output, testing::HasSubstr(std::string("  kind              ") + kind));
        std::filesystem::remove(path("plan.qedb"));
    }
}

TEST_F(ShowCommand, AssignedSystem_IsPrintedInAlignedLines)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    expectResult(run({"show", "plan.qedb"}), 0,
                 "plan.qedb\n"
                 "  drawing version   33\n"
                 "  code              EPSG:25832\n"
                 "  name              ETRS89 / UTM zone 32N\n"
                 "  kind              3 (projected)\n"
                 "  datum             EPSG:6258\n"
                 "  ellipsoid         EPSG:7019\n"
                 "  known to catalog  yes\n"
                 "  source            geodata\n",
                 "");
}

TEST_F(ShowCommand, WktOption_AddsTheWktAsTheLastLine)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    const Json json = runForJson({"show", "--wkt", "plan.qedb"});
    EXPECT_EQ(json.size(), 12U);
    const std::string wkt = json["wkt"];
    EXPECT_THAT(wkt, testing::StartsWith("PROJCS[\"ETRS89 / UTM zone 32N\",GEOGCS["));
    EXPECT_THAT(run({"show", "--wkt", "plan.qedb"}).output, testing::EndsWith("  wkt               " + wkt + "\n"));
}

TEST_F(ShowCommand, DeprecatedSystem_IsNamedWithItsReplacement)
{
    givenDrawing("plan.qedb");
    ASSERT_EQ(run({"assign", "EPSG:3785", "plan.qedb"}).status, 0);
    const Json json = runForJson({"show", "plan.qedb"});
    EXPECT_EQ(json["deprecated"], true);
    EXPECT_EQ(json["replacedBy"], "EPSG:3857");
    EXPECT_THAT(run({"show", "plan.qedb"}).output, testing::HasSubstr("  deprecated        yes\n"
                                                                      "  replaced by       EPSG:3857\n"));
}

TEST_F(ShowCommand, DeprecatedSystemWithoutAReplacement_HasNone)
{
    givenDrawing("plan.qedb");
    ASSERT_EQ(run({"assign", "EPSG:4001", "plan.qedb"}).status, 0);
    const Json json = runForJson({"show", "plan.qedb"});
    EXPECT_EQ(json["deprecated"], true);
    EXPECT_EQ(json["replacedBy"], nullptr);
    EXPECT_THAT(run({"show", "plan.qedb"}).output, testing::AllOf(testing::HasSubstr("deprecated        yes\n"),
                                                                  testing::Not(testing::HasSubstr("replaced"))));
}

TEST_F(ShowCommand, SystemThatWkt1CannotExpress_IsPrintedAsWkt2)
{
    givenDrawingWith("plan.qedb", "EPSG:4979");
    EXPECT_THAT(runForJson({"show", "--wkt", "plan.qedb"})["wkt"].get<std::string>(),
                testing::StartsWith("GEOGCRS[\"WGS 84\","));
}

TEST_F(ShowCommand, SystemWithoutADatumCode_HasANullDatum)
{
    givenDrawingWith("plan.qedb", "EPSG:4019");
    const Json json = runForJson({"show", "plan.qedb"});
    EXPECT_EQ(json["datum"], nullptr);
    EXPECT_EQ(json["ellipsoid"], "EPSG:7019");
}

TEST_F(ShowCommand, LocalSystem_HasNeitherDatumNorEllipsoid)
{
    givenDrawingWith("plan.qedb", "LOCAL:METRE");
    const Json json = runForJson({"show", "plan.qedb"});
    EXPECT_EQ(json["kind"], 1);
    EXPECT_EQ(json["datum"], nullptr);
    EXPECT_EQ(json["ellipsoid"], nullptr);
    EXPECT_EQ(json["knownToCatalog"], true);
}

TEST_F(ShowCommand, DrawingWithoutASystem_ExitsWithStatusThree)
{
    givenDrawing("plan.qedb");
    expectResult(run({"show", "plan.qedb"}), 3, "", "orvelcs: show: plan.qedb: has no coordinate system\n");
    EXPECT_EQ(runForJson({"show", "plan.qedb"}, 3), noSystem("plan.qedb"));
}

TEST_F(ShowCommand, DrawingWithoutASystem_HasANullWkt)
{
    givenDrawing("plan.qedb");
    EXPECT_EQ(runForJson({"show", "--wkt", "plan.qedb"}, 3)["wkt"], nullptr);
}

TEST_F(ShowCommand, LegacyCode_IsReadFromTheCatalog)
{
    givenDrawing("plan.qedb");
    ASSERT_EQ(run({"forms", "plan.qedb", "--put", "legacy=EPSG:25832", "geodata=nonsense"}).status, 0);
    EXPECT_EQ(runForJson({"show", "plan.qedb"}), assignedSystem("legacy"));
}

TEST_F(ShowCommand, LegacyCodeOfADot_CountsAsAbsent)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    ASSERT_EQ(run({"forms", "plan.qedb", "--put", "legacy=."}).status, 0);
    EXPECT_EQ(runForJson({"show", "plan.qedb"}), assignedSystem("geodata"));
}

TEST_F(ShowCommand, UnknownLegacyCode_Fails)
{
    givenDrawing("plan.qedb");
    ASSERT_EQ(run({"forms", "plan.qedb", "--put", "legacy=NO:1"}).status, 0);
    expectResult(run({"show", "plan.qedb"}), 1, "",
                 "orvelcs: show: plan.qedb: eNotApplicable (2): the stored coordinate system cannot be read\n");
    Json expected = noSystem("plan.qedb");
    expected["source"] = "legacy";
    expected["result"] = 2;
    expected["error"] = errorMember("show", "plan.qedb", 2, "eNotApplicable",
                                    "eNotApplicable (2): the stored coordinate system cannot be read");
    EXPECT_EQ(runForJson({"show", "plan.qedb"}, 1), expected);
}

TEST_F(ShowCommand, UnreadableGeoData_Fails)
{
    givenDrawing("plan.qedb");
    ASSERT_EQ(run({"forms", "plan.qedb", "--put", "geodata=nonsense"}).status, 0);
    EXPECT_EQ(runForJson({"show", "plan.qedb"}, 1)["result"], 3);
}

TEST_F(ShowCommand, BatchWithAMissingDrawing_Fails)
{
    givenDrawingWith("a.qedb", "EPSG:4326");
    givenDrawing("b.qedb");
    const Json json = runForJson({"show", "a.qedb", "missing.qedb", "b.qedb"}, 1);
    ASSERT_EQ(json.size(), 3U);
    EXPECT_EQ(json[0]["code"], "EPSG:4326");
    EXPECT_EQ(json[1]["drawingVersion"], nullptr);
    EXPECT_EQ(json[1]["result"], 50);
    EXPECT_EQ(json[2], noSystem("b.qedb"));
}

TEST_F(ShowCommand, DashAsFile_ReadsStandardInput)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    const ProgramResult result = run({"show", "-", "--json"}, contents("plan.qedb"));
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(Json::parse(result.output)["code"], "EPSG:25832");
}

TEST_F(ShowCommand, Drawing_IsNotWritten)
{
    givenDrawingWith("plan.qedb", "EPSG:25832");
    const auto written = std::filesystem::last_write_time(path("plan.qedb"));
    ASSERT_EQ(run({"show", "plan.qedb"}).status, 0);
    EXPECT_EQ(std::filesystem::last_write_time(path("plan.qedb")), written);
}

} // namespace
} // namespace Tests
