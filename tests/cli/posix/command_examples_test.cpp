// The examples of the help, each run as it stands there, and the manual page read by a program for such pages.
#include <cstdlib>
#include <iostream>

#include "cli/command_line_test.h"
#include "cli/posix/shell_run.h"

namespace Tests {
namespace {

constexpr const char* kWorks = R"(PROJCRS["Works",BASEGEOGCRS["WGS 84",DATUM["World Geodetic System 1984",
ELLIPSOID["WGS 84",6378137,298.257223563]]],CONVERSION["Works",METHOD["Transverse Mercator",ID["EPSG",9807]],
PARAMETER["Latitude of natural origin",50,ANGLEUNIT["degree",0.0174532925199433]],
PARAMETER["Longitude of natural origin",9,ANGLEUNIT["degree",0.0174532925199433]],
PARAMETER["Scale factor at natural origin",1,SCALEUNIT["unity",1]],
PARAMETER["False easting",1000,LENGTHUNIT["metre",1]],PARAMETER["False northing",2000,LENGTHUNIT["metre",1]]],
CS[Cartesian,2],AXIS["easting",east],AXIS["northing",north],LENGTHUNIT["metre",1]])";

class CommandExamples : public CommandLineTest {
protected:
    /// The drawings and texts that the examples name, and nothing else.
    void prepareFolder() const
    {
        const std::string item = configurationItem("EPSG:4230", "EPSG:4326", "ED50 to WGS 84 (1)", 2);
        for (const std::string& name : files())
            std::filesystem::remove_all(path(name));
        std::filesystem::create_directory(path("plans"));
        for (const char* name : {"plan.qedb", "site.qedb", "plans/north.qedb", "plans/south.qedb"})
            givenDrawingWith(name, "EPSG:25832");
        givenDrawing("other.qedb");
        given("damaged.qedb", damagedDrawing_);
        given("configured.qedb", configuredDrawing_);
        given("settings.xml", item);
        given("works.wkt", kWorks);
        given("points.txt", "# latitude longitude\n52.5 13.4\n48.85 2.35 35\n");
        given("points.csv", "lat,lon,name\n52.5,13.4,Berlin\n");
        given("block", block_);
    }

    /// Makes what takes a run of the program each.
    void makeFiles()
    {
        givenConfiguredDrawing("configured.qedb", configurationItem("EPSG:4230", "EPSG:4326", "ED50 to WGS 84 (1)", 2));
        configuredDrawing_ = contents("configured.qedb");
        givenDrawingWith("damaged.qedb", "EPSG:25832");
        edit("damaged.qedb", "UPDATE fields SET value = 'nothing' WHERE field = 'coordinate system'");
        damagedDrawing_ = contents("damaged.qedb");
        block_ = run({"encode", "EPSG:25832", "--drawing-version", "29"}).output;
    }

    ProgramResult runExample(const std::string& command) const
    {
        ProgramRun script = shellRun("PATH=\"$(dirname \"$0\"):$PATH\"\n" + command);
        script.environment["VORLEN_USER_DICTIONARY_PATH"] = path("user").string();
        return run(script);
    }

private:
    std::string configuredDrawing_;
    std::string damagedDrawing_;
    std::string block_;
};

TEST_F(CommandExamples, EachExample_EndsWithItsExitStatus)
{
    makeFiles();
    std::size_t count = 0;
    for (const Json& command : runForJson({"commands"})) {
        const bool isGroup = !command["subcommands"].empty() && command["arguments"].empty();
        EXPECT_NE(command["examples"].empty(), !isGroup) << command["name"] << " needs an example unless it is a group";
        for (const Json& example : command["examples"]) {
            const auto line = example["command"].get<std::string>();
            SCOPED_TRACE(line);
            EXPECT_THAT(line, testing::HasSubstr("orvelcs "));
            prepareFolder();
            const ProgramResult result = runExample(line);
            EXPECT_EQ(result.status, example["status"].get<int>()) << result.output << result.errors;
            ++count;
        }
    }
    EXPECT_GE(count, 40U);
    std::cout << count << " examples were run\n";
}

TEST_F(CommandExamples, ExampleWithAMistake_IsNoticed)
{
    makeFiles();
    prepareFolder();
    EXPECT_EQ(runExample("orvelcs show plan.qedb").status, 0);
    EXPECT_EQ(runExample("orvelcs show missing.qedb").status, 1);
    EXPECT_EQ(runExample("orvelcs show --missing plan.qedb").status, 2);
    EXPECT_EQ(runExample("orvelc show plan.qedb").status, 127);
}

/// The page has no date: it changes with the program and not with the day.
TEST_F(CommandExamples, ManualPage_HasNoMistake)
{
    const ProgramResult result =
        run(shellRun("\"$0\" commands --man >page.1 && { mandoc -T lint -W warning page.1 | grep -v 'missing date'; "
                     "mandoc -T utf8 page.1; }"));
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_THAT(result.output, testing::StartsWith("ORVELCS(1)"));
}

} // namespace
} // namespace Tests
