// Exported files on a full disk, in a folder that is not writable, and by a process that is killed.
#include "cli/command_line_test.h"
#include "cli/posix/shell_run.h"
#include "cli/posix/unprivileged_run.h"

namespace Tests {
namespace {

using testing::AnyOf;
using testing::ElementsAre;
using testing::StartsWith;

constexpr int kMostExportCalls = 30; // more than an export makes

class ExportFailure : public CommandLineTest {
protected:
    ExportFailure() { std::filesystem::create_directory(path("out")); }

    static ProgramRun exportRun(const std::string& file)
    {
        ProgramRun run;
        run.arguments = {"export", "EPSG:25832", "-o", file, "--force"};
        return run;
    }
    ProgramResult exportOnFailingDisk(const std::string& file, int call, const std::string& failure) const
    {
        ProgramRun failing = exportRun(file);
        failing.environment = {{"LD_PRELOAD", ORVEL_FAILING_DISK},
                               {"ORVEL_DISK_FOLDER", path("out").string()},
                               {"ORVEL_DISK_CALL", std::to_string(call)},
                               {"ORVEL_DISK_WAY", failure}};
        return run(failing);
    }
    /// Exports over an old file, failing at each call.
    void expectOldOrNewFile(const std::string& failure, int statusOfFailure) const
    {
        given("out/new.prj", "");
        ASSERT_EQ(run(exportRun("out/new.prj")).status, 0);
        const std::string whole = contents("out/new.prj");
        int failures = 0;
        for (int call = 0; call < kMostExportCalls && !HasFailure(); ++call) {
            SCOPED_TRACE(failure + " at call " + std::to_string(call));
            given("out/plan.prj", "old");
            const ProgramResult result = exportOnFailingDisk("out/plan.prj", call, failure);
            EXPECT_THAT(contents("out/plan.prj"), AnyOf("old", whole));
            if (result.status == 0) // the export makes fewer calls
                break;
            EXPECT_EQ(result.status, statusOfFailure) << result.errors;
            ++failures;
        }
        EXPECT_GT(failures, 2) << "the library has not counted the calls";
    }
};

TEST_F(ExportFailure, FullDisk_LeavesTheOldFileOrTheNew)
{
    expectOldOrNewFile("full", 1);
    EXPECT_THAT(files("out"), ElementsAre("new.prj", "plan.prj"));
}

TEST_F(ExportFailure, KilledProcess_LeavesTheOldFileOrTheNew)
{
    expectOldOrNewFile("killed", -1);
    expectOldOrNewFile("halfway", -1);
}

TEST_F(ExportFailure, FileThatMayNotGrow_IsNoFile)
{
    expectResult(run(shellRun("ulimit -f 1; exec \"$0\" export EPSG:25832 -o out/plan.gpkg")), 1, "",
                 "orvelcs: export: out/plan.gpkg: eFileWriteFailed (54): cannot be written: File too large\n");
    EXPECT_THAT(files("out"), ElementsAre());
}

TEST_F(ExportFailure, FolderThatIsNotWritable_IsNamed)
{
    using std::filesystem::perms;
    std::filesystem::permissions(path("out"), perms::owner_read | perms::owner_exec);
    expectResult(run(withoutPrivileges(exportRun("out/plan.gpkg"))), 1, "",
                 StartsWith("orvelcs: export: out/plan.gpkg: eFileWriteFailed (54): cannot be written: Permission "));
    std::filesystem::permissions(path("out"), perms::owner_all);
    EXPECT_THAT(files("out"), ElementsAre());
}

} // namespace
} // namespace Tests
