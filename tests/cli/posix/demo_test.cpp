#include "cli/command_line_test.h"

namespace Tests {
namespace {

class Demo : public CommandLineTest {
protected:
    ProgramResult runDemo(const std::string& programFolder) const
    {
        ProgramRun script;
        script.program = std::filesystem::path(ORVEL_SOURCE_DIR) / "scripts" / "demo.sh";
        script.arguments = {programFolder};
        script.environment = {{"TMPDIR", path("").string()}};
        return run(script);
    }
};

TEST_F(Demo, DemoScript_SucceedsAndLeavesNoFiles)
{
    const ProgramResult result = runDemo(std::filesystem::path(ORVELCS_PROGRAM).parent_path().string());
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "");
    for (const char* line : {"$ orvelcs new plan.qedb\nplan.qedb: new drawing, version 33\n",
                             "$ orvelcs catalog search ETRS89 ",
                             "\nEPSG:25832  projected  ETRS89 / UTM zone 32N",
                             "$ orvelcs assign EPSG:25832 plan.qedb\nplan.qedb: assigned EPSG:25832\n",
                             "\n  legacy projection: none\n",
                             "\n    owned by model space\n",
                             "\nplan.qedb: willChange EPSG:31467\nplan.qedb: willChange null\nplan.qedb: changed null\n"
                             "plan.qedb: changed EPSG:31467\nplan.qedb: assigned EPSG:31467\n",
                             "\norvelcs: assign: plan.qedb: eVetoed (325): a reactor vetoed the change\n",
                             "\nplan.qedb: cleared\n",
                             "\norvelcs: show: plan.qedb: has no coordinate system\n",
                             "\nplan.qedb: assigned WORKS:1\n",
                             "\n  known to catalog  no\n",
                             "\norvelcs: catalog show: WORKS:1: the catalog has no such code",
                             "\nplan.qedb: converted to drawing version 29, in older.qedb\n",
                             "\nolder.qedb, drawing version 29\n",
                             "\n  legacy projection: \"EPSG:25832\"\n",
                             "\n    holds EllipsoidDefinition EPSG:7019\n",
                             "\n  GeoData: \"PROJCS[",
                             "\npacked.bin: EPSG:25832 for drawing version 29, ",
                             "\nCoordinateReferenceSystemDefinition  EPSG:25832  ETRS89 / UTM zone 32N\n",
                             "\n  source            legacy\n",
                             "\nolder.qedb: converted to drawing version 33\n",
                             "\nolder.qedb, drawing version 33\n",
                             "\n# Done\n"})
        EXPECT_THAT(result.output, testing::HasSubstr(line));
    EXPECT_TRUE(files().empty());
}

TEST_F(Demo, FolderWithoutTheProgram_IsWrongUsage)
{
    expectResult(runDemo(path("").string()), 2, "", "usage: demo.sh FOLDER-OF-THE-PROGRAM\n");
}

} // namespace
} // namespace Tests
