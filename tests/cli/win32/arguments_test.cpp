// Arguments that only this system allows: unpaired surrogates and invalid names of files.
#include "cli/command_line_test.h"

namespace Tests {
namespace {

using WindowsArguments = CommandLineTest;

TEST_F(WindowsArguments, HalfASurrogatePair_IsWrongUsageInEveryArgument)
{
    givenDrawing("plan.qedb");
    const std::string before = contents("plan.qedb");
    const std::string line = "orvelcs: command line: a\xEF\xBF\xBDz: holds half a surrogate pair";
    expectWrongUsage(run({"assign", "a\xED\xA0\x80z", "plan.qedb"}), line);
    expectWrongUsage(run({"new", "a\xED\xBF\xBFz"}), line);
    expectWrongUsage(run({"forms", "plan.qedb", "--put", "a\xED\xB0\x80z"}), line);
    EXPECT_EQ(contents("plan.qedb"), before);
    EXPECT_EQ(files(), std::vector<std::string>{"plan.qedb"});
}

TEST_F(WindowsArguments, InvalidFileName_IsRefusedInOneLine)
{
    expectResult(run({"new", "a\nb.qedb"}), 1, "",
                 "orvelcs: new: a\\nb.qedb: eFileWriteFailed (54): cannot be written: not a valid file name\n");
    expectResult(run({"show", "what?.qedb"}), 1, "",
                 "orvelcs: show: what?.qedb: eFileNotFound (50): not a valid file name\n");
    EXPECT_EQ(files(), std::vector<std::string>());
}

TEST_F(WindowsArguments, DeviceName_IsNotADrawing)
{
    expectResult(run({"show", "NUL"}), 1, "",
                 "orvelcs: show: NUL: eFileDamaged (51): is a device, not a regular file\n");
    expectResult(run({"new", "--force", "NUL"}), 1, "",
                 "orvelcs: new: NUL: eFileWriteFailed (54): is a device, not a regular file\n");
}

TEST_F(WindowsArguments, Backslashes_SeparateFolders)
{
    std::filesystem::create_directory(path("plans"));
    expectResult(run({"new", "plans\\a.qedb"}), 0, "plans\\a.qedb: new drawing, version 33\n", "");
    EXPECT_EQ(runForJson({"show", "plans/a.qedb"}, 3)["file"], "plans/a.qedb");
}

} // namespace
} // namespace Tests
