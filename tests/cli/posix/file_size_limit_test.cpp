// The files of the program may not be larger than one block. Windows has no such limit.
#include "cli/command_line_test.h"
#include "cli/posix/shell_run.h"

namespace Tests {
namespace {

class FileSizeLimit : public CommandLineTest {
protected:
    ProgramResult runLimited(const std::string& arguments, const std::string& input = "") const
    {
        return run(shellRun("ulimit -f 1; exec \"$0\" " + arguments, input));
    }
};

TEST_F(FileSizeLimit, OverlongDrawing_IsRefusedAndLeavesTheOldOne)
{
    givenDrawing("a.qedb");
    const std::string before = contents("a.qedb");
    expectResult(runLimited("assign EPSG:31467 a.qedb"), 1, "",
                 "orvelcs: assign: a.qedb: eFileWriteFailed (54): cannot be written: File too large\n");
    EXPECT_EQ(contents("a.qedb"), before);
    EXPECT_EQ(files(), std::vector<std::string>{"a.qedb"});
}

TEST_F(FileSizeLimit, OverlongOutput_IsReported)
{
    const ProgramResult show = runLimited("catalog show --json --wkt EPSG:25832");
    EXPECT_EQ(show.status, 1);
    EXPECT_EQ(show.errors, "orvelcs: catalog show: standard output: cannot be written: File too large\n");
    std::string bytes; // has no runs, so that packing does not shorten it
    for (int index = 0; index < 2000; ++index)
        bytes.push_back(static_cast<char>(index % 251));
    const ProgramResult pack = runLimited("codec pack", bytes);
    EXPECT_EQ(pack.status, 1);
    EXPECT_EQ(pack.errors, "orvelcs: codec pack: standard output: cannot be written: File too large\n");
}

TEST_F(FileSizeLimit, CatalogSearch_NeedsNoTemporaryFile)
{
    const ProgramResult search = runLimited("catalog search --limit 1 EPSG:25832");
    EXPECT_EQ(search.status, 0);
    EXPECT_THAT(search.output, testing::StartsWith("EPSG:25832  projected  ETRS89 / UTM zone 32N  Europe "));
    EXPECT_EQ(search.errors, "");
}

} // namespace
} // namespace Tests
