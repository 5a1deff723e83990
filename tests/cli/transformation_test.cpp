#include <algorithm>

#include "command_line_test.h"

namespace Tests {
namespace {

using TransformationCommand = CommandLineTest;

TEST_F(TransformationCommand, ConfiguredTransformation_IsPrintedWithItsKind)
{
    givenConfiguredDrawing("plan.qedb", configurationItem("EPSG:4807", "EPSG:4326", "NTF (Paris) to WGS 84 (1)", 1));
    EXPECT_EQ(runForJson({"transformation", "EPSG:4807", "EPSG:4326", "--drawing", "plan.qedb"}),
              Json({{"name", "NTF (Paris) to WGS 84 (1)"}, {"kind", 1}}));
    expectResult(run({"transformation", "epsg:4326", "EPSG:4807", "--drawing", "plan.qedb"}), 0,
                 "  name  NTF (Paris) to WGS 84 (1)\n"
                 "  kind  path\n",
                 "");
}

TEST_F(TransformationCommand, DashAsDrawing_ReadsTheDrawingFromStandardInput)
{
    givenConfiguredDrawing("plan.qedb", configurationItem("EPSG:4275", "EPSG:4326", "NTF to WGS 84 (1)", 2));
    expectResult(run({"transformation", "EPSG:4275", "EPSG:4326", "--drawing", "-"}, contents("plan.qedb")), 0,
                 "  name  NTF to WGS 84 (1)\n"
                 "  kind  transformation\n",
                 "");
}

TEST_F(TransformationCommand, LookUp_LeavesTheDrawingUnchanged)
{
    givenConfiguredDrawing("plan.qedb", configurationItem("EPSG:4275", "EPSG:4326", "NTF to WGS 84 (1)", 2));
    const std::string before = contents("plan.qedb");
    EXPECT_EQ(run({"transformation", "EPSG:4275", "EPSG:4326", "--drawing", "plan.qedb"}).status, 0);
    EXPECT_EQ(contents("plan.qedb"), before);
    EXPECT_EQ(files(), std::vector<std::string>{"plan.qedb"});
}

TEST_F(TransformationCommand, MissingConfiguration_ExitsWithStatusThree)
{
    EXPECT_EQ(runForJson({"transformation", "EPSG:4275", "EPSG:4326"}, 3), Json(nullptr));
    givenConfiguredDrawing("plan.qedb", configurationItem("EPSG:4275", "EPSG:4326", "NTF to WGS 84 (1)", 2));
    expectResult(run({"transformation", "EPSG:4230", "EPSG:4326", "--drawing", "plan.qedb"}), 3, "",
                 "orvelcs: transformation: EPSG:4230 to EPSG:4326: no transformation is configured\n");
}

TEST_F(TransformationCommand, MisspeltCode_IsReportedWithTheNearestCodes)
{
    const ProgramResult result = run({"transformation", "EPSG:4326", "EPSG:48078"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.errors, testing::HasSubstr("no transformation is configured; the catalog has no EPSG:48078; the "
                                                  "nearest are EPSG:4807"));
}

TEST_F(TransformationCommand, MissingDrawing_Fails)
{
    const ProgramResult result = run({"transformation", "EPSG:4275", "EPSG:4326", "--drawing", "none.qedb", "--json"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "orvelcs: transformation: none.qedb: eFileNotFound (50): No such file or directory\n");
    EXPECT_EQ(errorLine(Json::parse(result.output)["error"]), result.errors);
}

TEST_F(TransformationCommand, InvalidArguments_AreWrongUsage)
{
    expectWrongUsage(run({"transformation"}), "orvelcs: transformation: SRC: is required");
    expectWrongUsage(run({"transformation", "EPSG:1"}), "orvelcs: transformation: DST: is required");
    expectWrongUsage(run({"transformation", "A", "B", "C"}), "orvelcs: transformation: C: one argument too many");
    expectWrongUsage(run({"transformation", "list", "A"}), "orvelcs: transformation list: DST: is required");
    expectWrongUsage(run({"transformation", "list", "A", "B", "C"}),
                     "orvelcs: transformation list: C: one argument too many");
    expectWrongUsage(run({"transformation", "A", "list", "B", "C"}),
                     "orvelcs: transformation list: A: one argument too many");
    expectWrongUsage(run({"transformation", "list", "A", "B", "--drawing", "plan.qedb"}),
                     "orvelcs: transformation list: --drawing: has no place here; the list is the catalog's");
}

TEST_F(TransformationCommand, List_HasTheFieldsOfTheCatalog)
{
    const Json list = runForJson({"transformation", "list", "EPSG:4230", "EPSG:4326"});
    EXPECT_GE(list.size(), 40U);
    const auto operation =
        std::find_if(list.begin(), list.end(), [](const Json& entry) { return entry["code"] == "EPSG:1311"; });
    ASSERT_NE(operation, list.end());
    EXPECT_EQ((*operation)["name"], "ED50 to WGS 84 (18)");
    EXPECT_EQ((*operation)["kind"], 2);
    EXPECT_EQ((*operation)["accuracy"], 1.0);
    EXPECT_THAT((*operation)["areaOfUse"].get<std::string>(), testing::StartsWith("Denmark - offshore"));
    EXPECT_EQ((*operation)["direction"], "forward");
    EXPECT_EQ((*operation)["reversible"], true);
    EXPECT_EQ((*operation)["usable"], true);
    EXPECT_EQ((*operation)["grids"], Json::array());
}

TEST_F(TransformationCommand, List_NamesGridsAndTheirAvailability)
{
    std::size_t grids = 0;
    for (const Json& operation : runForJson({"transformation", "list", "EPSG:4326", "EPSG:4230"})) {
        EXPECT_EQ(operation["direction"], "inverse");
        for (const Json& grid : operation["grids"]) {
            ++grids;
            EXPECT_FALSE(grid["name"].get<std::string>().empty());
            EXPECT_EQ(operation["usable"], grid["available"]);
        }
    }
    EXPECT_GT(grids, 0U);
}

TEST_F(TransformationCommand, List_PrintsAlignedColumns)
{
    const ProgramResult result = run({"transformation", "list", "EPSG:4979", "EPSG:9707"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.output,
                testing::HasSubstr("EPSG:10084  transformation  1 m  forward  WGS 84 to EGM96 height (1)\n"
                                   "    World.\n"
                                   "    grid us_nga_egm96_15.tif: "));
    EXPECT_THAT(run({"transformation", "list", "EPSG:9707", "EPSG:4979"}).output,
                testing::HasSubstr("EPSG:10084  transformation  1 m  not reversible  WGS 84 to EGM96 height (1)\n"));
}

TEST_F(TransformationCommand, ListWithoutATransformation_IsEmpty)
{
    expectResult(run({"transformation", "list", "EPSG:2263", "EPSG:2154", "--json"}), 3, "[]\n",
                 "orvelcs: transformation list: EPSG:2263 to EPSG:2154: the catalog has no transformation or path "
                 "between the two\n");
}

TEST_F(TransformationCommand, List_MarksMethodsThatProjDoesNotImplement)
{
    const Json listed = runForJson({"transformation", "list", "EPSG:7660", "EPSG:7677"});
    ASSERT_EQ(listed.size(), 1U);
    const bool isUsable = listed[0]["usable"]; // depends on the version of PROJ
    const std::string printed = run({"transformation", "list", "EPSG:7660", "EPSG:7677"}).output;
    EXPECT_EQ(printed.find("PROJ does not implement its method") == std::string::npos, isUsable) << printed;
}

TEST_F(TransformationCommand, ListForAMisspeltCode_SuggestsTheNearestCodes)
{
    expectResult(run({"transformation", "list", "EPSG:48078", "EPSG:4326", "--json"}), 3, "[]\n",
                 testing::StartsWith("orvelcs: transformation list: EPSG:48078: the catalog has no such "
                                     "code; the nearest are EPSG:4807"));
}

TEST_F(TransformationCommand, ListForALocalPlane_IsRefused)
{
    expectResult(run({"transformation", "list", "LOCAL:METRE", "EPSG:4326"}), 1, "",
                 "orvelcs: transformation list: LOCAL:METRE: is not referenced to the Earth, so nothing leads from or "
                 "to it\n");
}

} // namespace
} // namespace Tests
