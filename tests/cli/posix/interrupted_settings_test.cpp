// The user's settings file is replaced on a full disk, by a killed process, and through links.
#include <sys/stat.h>

#include "cli/command_line_test.h"
#include "cli/posix/shell_run.h"

namespace Tests {
namespace {

using testing::AnyOf;

constexpr const char* kOldItem = "<Item>old</Item>";
constexpr const char* kOldLine = "<Item>old</Item>\r\n";
constexpr const char* kNewItems = "<Item>new</Item><Item>newer</Item>";
constexpr const char* kNewLines = "<Item>new</Item>\r\n<Item>newer</Item>\r\n";
constexpr int kMaximumCalls = 30; // more than a change makes

class InterruptedSettings : public CommandLineTest {
protected:
    std::string folder() const { return path("user").string(); }
    std::string settings() const { return contents(std::string("user/") + kSettingsFile); }
    ProgramRun changeRun(const std::string& text) const
    {
        ProgramRun change;
        change.arguments = {"config", "set", "-", "--user", "--quiet", "--wait", "0", "--user-dir", folder()};
        change.input = text;
        return change;
    }
    ProgramResult changeOnFailingDisk(int call, const std::string& failure) const
    {
        ProgramRun change = changeRun(kNewItems);
        change.environment = {{"LD_PRELOAD", ORVEL_FAILING_DISK},
                              {"ORVEL_DISK_FOLDER", folder()},
                              {"ORVEL_DISK_CALL", std::to_string(call)},
                              {"ORVEL_DISK_WAY", failure}};
        return run(change);
    }
    void givenOldSettings() const
    {
        std::filesystem::remove_all(folder());
        ASSERT_EQ(run(changeRun(kOldItem)).status, 0);
        ASSERT_EQ(settings(), kOldLine);
    }
    void expectNextChangeSucceeds() const
    {
        expectResult(run(changeRun(kNewItems)), 0, "", "");
        EXPECT_EQ(settings(), kNewLines);
        EXPECT_EQ(files("user"), (std::vector<std::string>{kSettingsFile, kLockFile}));
    }
    void expectStagedTextIsPrivate() const
    {
        const std::filesystem::path staging = path("user") / ".orvelcs-new";
        if (std::filesystem::exists(staging / kSettingsFile)) {
            EXPECT_EQ(std::filesystem::status(staging).permissions(), std::filesystem::perms::owner_all);
        }
    }
    /// Kills the change at each of its calls and returns how many times the old file remained.
    int killAtEachCall(const std::string& failure) const
    {
        int oldFiles = 0;
        for (int call = 0; call < kMaximumCalls && !HasFailure(); ++call) {
            SCOPED_TRACE(failure + " at call " + std::to_string(call));
            givenOldSettings();
            const ProgramResult result = changeOnFailingDisk(call, failure);
            if (result.status == 0) { // the change makes fewer calls
                EXPECT_GT(call, 10) << "the library has not counted the calls";
                return oldFiles;
            }
            EXPECT_EQ(result.status, -1) << result.errors;
            EXPECT_THAT(settings(), AnyOf(kOldLine, kNewLines));
            expectStagedTextIsPrivate();
            oldFiles += settings() == kOldLine ? 1 : 0;
            expectNextChangeSucceeds();
        }
        ADD_FAILURE() << "the change makes more than " << kMaximumCalls << " calls";
        return oldFiles;
    }
};

TEST_F(InterruptedSettings, ProcessKilledAtAnyCall_LeavesTheOldOrTheNewSettings)
{
    EXPECT_GT(killAtEachCall("killed"), 5);
}

TEST_F(InterruptedSettings, ProcessKilledDuringAnyWrite_LeavesTheOldOrTheNewSettings)
{
    EXPECT_GT(killAtEachCall("halfway"), 5);
}

TEST_F(InterruptedSettings, DiskFullFromAnyCallOn_LeavesTheOldSettingsWithAMessageOrTheNew)
{
    int failed = 0;
    for (int call = 0; call < kMaximumCalls && !HasFailure(); ++call) {
        SCOPED_TRACE("full from call " + std::to_string(call) + " on");
        givenOldSettings();
        const ProgramResult result = changeOnFailingDisk(call, "full");
        if (settings() == kNewLines) {
            expectResult(result, 0, "", "");
            continue;
        }
        ++failed;
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(settings(), kOldLine);
        EXPECT_THAT(result.errors, testing::HasSubstr("orvelcs: config set: " + folder()));
        EXPECT_EQ(files("user"), (std::vector<std::string>{kSettingsFile, kLockFile}));
    }
    EXPECT_GT(failed, 5);
}

TEST_F(InterruptedSettings, FileSizeLimit_LeavesTheOldSettings)
{
    givenOldSettings();
    const ProgramRun change = changeRun("<Item>" + std::string(2000, 'x') + "</Item>");
    ProgramRun limited = shellRun("ulimit -f 1; exec \"$0\" \"$@\"", change.input);
    limited.arguments = concatenate(limited.arguments, change.arguments);
    expectResult(run(limited), 1, "",
                 "orvelcs: config set: " + folder() + "/" + kSettingsFile + ": was not written to its end\n");
    EXPECT_EQ(settings(), kOldLine);
    EXPECT_EQ(files("user"), (std::vector<std::string>{kSettingsFile, kLockFile}));
}

TEST_F(InterruptedSettings, SymbolicLink_IsKeptAndItsTargetReplaced)
{
    std::filesystem::create_directory(folder());
    std::filesystem::create_directory(path("kept"));
    given("kept/settings", kOldLine);
    std::filesystem::create_symlink("../kept/settings", path("user") / kSettingsFile);
    ASSERT_EQ(run(changeRun(kNewItems)).status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(path("user") / kSettingsFile));
    EXPECT_EQ(contents("kept/settings"), kNewLines);
}

TEST_F(InterruptedSettings, FilePermissions_ArePreserved)
{
    givenOldSettings();
    ASSERT_EQ(::chmod((folder() + "/" + kSettingsFile).c_str(), 0640), 0);
    ASSERT_EQ(run(changeRun(kNewItems)).status, 0);
    struct stat information {};
    ASSERT_EQ(::stat((folder() + "/" + kSettingsFile).c_str(), &information), 0);
    EXPECT_EQ(information.st_mode & 07777U, 0640U);
}

TEST_F(InterruptedSettings, FolderWithTheLongestName_IsUsed)
{
    std::string longest = folder();
    while (longest.size() < 259)
        longest += longest.size() % 50 == 0 ? '/' : 'f';
    ProgramRun change = changeRun(kNewItems);
    change.arguments.back() = longest;
    expectResult(run(change), 0, "", "");
    EXPECT_EQ(readFile(longest + "/" + kSettingsFile), kNewLines);
}

} // namespace
} // namespace Tests
