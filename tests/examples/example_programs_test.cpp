// Runs each program of examples/ and compares what it prints.
#include "cli/command_line_test.h"

#include <set>

namespace Tests {
namespace {

class ExamplePrograms : public CommandLineTest {
protected:
    static ProgramRun example(const std::string& name, Arguments arguments = {})
    {
        ProgramRun programRun;
        programRun.program = std::filesystem::path(ORVEL_EXAMPLE_FOLDER) / ("example_" + name + ORVEL_EXAMPLE_SUFFIX);
        programRun.arguments = std::move(arguments);
        return programRun;
    }
    ProgramResult runExample(const std::string& name, Arguments arguments = {}) const
    {
        return runExample(example(name, std::move(arguments)));
    }
    /// Line ends are a newline alone, whatever the system writes.
    ProgramResult runExample(const ProgramRun& programRun) const
    {
        ProgramResult result = run(programRun);
        std::erase(result.output, '\r');
        std::erase(result.errors, '\r');
        return result;
    }
    int versionOf(const std::string& file) const { return runForJson({"show", file}).at("drawingVersion"); }
};

TEST_F(ExamplePrograms, Assign_PrintsTheCodeOfTheDrawing)
{
    expectResult(runExample("assign"), 0, "The drawing has EPSG:25832.\n", "");
}

TEST_F(ExamplePrograms, Assign_FailsWithoutACatalog)
{
    expectResult(runExample(withoutCatalog(example("assign"), path(""))), 1, "", "");
}

TEST_F(ExamplePrograms, Veto_RefusesSystemsOfOthersUntilTheReactorIsRemoved)
{
    expectResult(runExample("veto"), 0,
                 "LOCAL:METRE: vetoed\n"
                 "EPSG:2263: assigned\n"
                 "LOCAL:METRE: assigned\n",
                 "");
}

TEST_F(ExamplePrograms, ReadWithoutCatalog_PrintsEveryDefinition)
{
    givenDrawingWith("site.qedb", "EPSG:25832");
    expectResult(runExample(withoutCatalog(example("read_without_catalog", {"site.qedb"}), path(""))), 0,
                 "EPSG:25832 ETRS89 / UTM zone 32N\n"
                 "EPSG:6258 European Terrestrial Reference System 1989\n"
                 "EPSG:7019 GRS 1980\n",
                 "");
}

TEST_F(ExamplePrograms, ReadWithoutCatalog_PrintsNothingOfANewDrawing)
{
    givenDrawing("empty.qedb");
    expectResult(runExample("read_without_catalog", {"empty.qedb"}), 0, "", "");
}

TEST_F(ExamplePrograms, ReadWithoutCatalog_ReportsWhatCannotBeRead)
{
    givenDrawing("damaged.qedb");
    ASSERT_EQ(run({"forms", "damaged.qedb", "--put", "geodata=not a definition", "--quiet"}).status, 0);
    expectResult(runExample("read_without_catalog", {"damaged.qedb"}), 1, "", "the coordinate system cannot be read\n");
    expectResult(runExample("read_without_catalog", {"missing.qedb"}), 1, "", testing::HasSubstr("missing.qedb"));
}

TEST_F(ExamplePrograms, ChooseTransformation_KeepsTheFormerChoice)
{
    expectResult(runExample("choose_transformation"), 0,
                 "EPSG:4230 to EPSG:4326: ED50 to WGS 84 (1)\n"
                 "EPSG:4314 to EPSG:4326: DHDN to WGS 84 (2)\n"
                 "EPSG:2263 to EPSG:4326: no choice\n",
                 "");
}

TEST_F(ExamplePrograms, ConvertFolder_ConvertsEveryDrawingButTheDamagedOne)
{
    std::filesystem::create_directory(path("plans"));
    givenDrawingWith("plans/a.qedb", "EPSG:25832");
    givenDrawingWith("plans/c.qedb", "EPSG:2263");
    given("plans/b.qedb", "no drawing");
    given("plans/notes.txt", "no drawing");
    expectResult(runExample("convert_folder", {ORVEL_MODULE_FILE, "plans", "29"}), 1,
                 "a.qedb: version 29\nc.qedb: version 29\n", testing::HasSubstr("b.qedb: "));
    EXPECT_EQ(versionOf("plans/a.qedb"), 29);
    EXPECT_EQ(versionOf("plans/c.qedb"), 29);
    EXPECT_EQ(contents("plans/b.qedb"), "no drawing");
    const Json forms = runForJson({"forms", "plans/a.qedb"});
    EXPECT_EQ(forms.at("legacyProjection").at("code"), "EPSG:25832");
}

TEST_F(ExamplePrograms, OwnHost_LoadsCallsAndUnloadsTheModule)
{
    expectResult(runExample("own_host", {ORVEL_MODULE_FILE}), 0,
                 "The module is loaded, and may be unloaded.\n"
                 "SetCoordinateSystem returned 0.\n"
                 "The module is unloaded.\n",
                 "");
}

TEST_F(ExamplePrograms, OwnHost_NamesAMissingModule)
{
    expectResult(runExample("own_host", {"missing.so"}), 1, "", testing::HasSubstr("missing.so"));
}

TEST_F(ExamplePrograms, ProgramWithoutItsArguments_IsWrongUsage)
{
    for (const char* name : {"read_without_catalog", "convert_folder", "own_host"})
        expectResult(runExample(name), 2, "", testing::StartsWith(std::string("usage: example_") + name + " "));
}

} // namespace
} // namespace Tests
