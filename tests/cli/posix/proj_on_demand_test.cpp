// PROJ is loaded by the commands that need it. Here a file that is no library stands in its place.
#include "cli/command_line_test.h"

namespace Tests {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::StartsWith;

class ProjThatCannotBeLoaded : public CommandLineTest {
protected:
    void SetUp() override
    {
        CommandLineTest::SetUp();
        if (std::string_view(ORVEL_PROJ_LIBRARY).empty())
            GTEST_SKIP() << "PROJ is linked, not loaded";
        std::filesystem::create_directory(path("libraries"));
        given(std::string("libraries/") + ORVEL_PROJ_LIBRARY, "");
    }

    ProgramResult runWithoutProj(Arguments arguments) const
    {
        ProgramRun programRun;
        programRun.arguments = std::move(arguments);
        programRun.environment = {{"LD_LIBRARY_PATH", path("libraries").string()}};
        return run(programRun);
    }
};

TEST_F(ProjThatCannotBeLoaded, IsNotMissedByCommandsThatOnlyReadOrWriteFiles)
{
    givenDrawingWith("assigned.qedb", "EPSG:25832");
    const std::vector<Arguments> commands = {
        {"--help"},
        {"new", "new.qedb"},
        {"forms", "assigned.qedb"},
        {"dump", "assigned.qedb"},
        {"check", "assigned.qedb"},
        {"clear", "assigned.qedb"},
        {"convert", "new.qedb", "--to", "29", "-o", "converted.qedb"},
        {"codec", "pack"},
    };
    for (const Arguments& command : commands) {
        const ProgramResult result = runWithoutProj(command);
        EXPECT_EQ(result.status, 0) << command.front() << ": " << result.errors;
    }
}

TEST_F(ProjThatCannotBeLoaded, IsReportedByEachCommandThatNeedsTheCatalog)
{
    givenDrawing("empty.qedb");
    const std::string before = contents("empty.qedb");
    const std::vector<std::pair<std::string, Arguments>> commands = {
        {"assign", {"assign", "EPSG:25832", "empty.qedb"}},
        {"catalog show", {"catalog", "show", "EPSG:25832"}},
        {"transform", {"transform", "EPSG:4326", "EPSG:25832"}},
    };
    for (const auto& [name, arguments] : commands) {
        const ProgramResult result = runWithoutProj(arguments);
        EXPECT_EQ(result.status, 1) << name;
        EXPECT_THAT(result.errors,
                    AllOf(StartsWith("orvelcs: " + name + ": unexpected failure: PROJ cannot be loaded: "),
                          EndsWith(std::string(ORVEL_PROJ_LIBRARY) + ": file too short\n")));
    }
    EXPECT_EQ(contents("empty.qedb"), before);
}

} // namespace
} // namespace Tests
