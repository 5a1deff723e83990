// The user's settings file, replaced on a disk that is full, by a process that is killed, and by way of links.
#include <sys/stat.h>

#include "cli/command_line_test.h"

namespace Tests {
namespace {

using testing::AnyOf;

constexpr const char* kOldItem = "<Item>old</Item>";
constexpr const char* kOldLine = "<Item>old</Item>\r\n";
constexpr const char* kNewItems = "<Item>new</Item><Item>newer</Item>";
constexpr const char* kNewLines = "<Item>new</Item>\r\n<Item>newer</Item>\r\n";
constexpr const char* kFile = "TransformationSetting.xml";
constexpr int kMostCalls = 30; // more than a change makes

class InterruptedSettings : public CommandLineTest {
protected:
    std::string folder() const { return path("user").string(); }
    std::string settings() const { return contents(std::string("user/") + kFile); }
    std::vector<std::string> names() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder()))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }
    ProgramRun changeTo(const std::string& text) const
    {
        ProgramRun change;
        change.arguments = {"config", "set", "-", "--user", "--quiet", "--wait", "0", "--user-dir", folder()};
        change.input = text;
        return change;
    }
    ProgramResult changeOnFailingDisk(int call, const std::string& way) const
    {
        ProgramRun change = changeTo(kNewItems);
        change.environment = {{"LD_PRELOAD", ORVEL_FAILING_DISK},
                              {"ORVEL_DISK_FOLDER", folder()},
                              {"ORVEL_DISK_CALL", std::to_string(call)},
                              {"ORVEL_DISK_WAY", way}};
        return run(change);
    }
    void givenOldSettings() const
    {
        std::filesystem::remove_all(folder());
        ASSERT_EQ(run(changeTo(kOldItem)).status, 0);
        ASSERT_EQ(settings(), kOldLine);
    }
    void expectNextChangeIsClean() const
    {
        expectResult(run(changeTo(kNewItems)), 0, "", "");
        EXPECT_EQ(settings(), kNewLines);
        EXPECT_EQ(names(), (std::vector<std::string>{kFile, "orvelcs.lock"}));
    }
    void expectStagedTextIsPrivate() const
    {
        const std::filesystem::path staging = path("user") / ".orvelcs-new";
        if (std::filesystem::exists(staging / kFile)) {
            EXPECT_EQ(std::filesystem::status(staging).permissions(), std::filesystem::perms::owner_all);
        }
    }
    /// Kills the change at each of its calls; answers how many left the old file.
    int killAtEachCall(const std::string& way) const
    {
        int old = 0;
        for (int call = 0; call < kMostCalls && !HasFailure(); ++call) {
            SCOPED_TRACE(way + " at call " + std::to_string(call));
            givenOldSettings();
            const ProgramResult result = changeOnFailingDisk(call, way);
            if (result.status == 0) { // it makes fewer calls
                EXPECT_GT(call, 10) << "of the calls that were meant none was seen";
                return old;
            }
            EXPECT_EQ(result.status, -1) << result.errors;
            EXPECT_THAT(settings(), AnyOf(kOldLine, kNewLines));
            expectStagedTextIsPrivate();
            old += settings() == kOldLine ? 1 : 0;
            expectNextChangeIsClean();
        }
        ADD_FAILURE() << "a change that makes more than " << kMostCalls << " calls";
        return old;
    }
};

TEST_F(InterruptedSettings, AProcessKilledAtAnyCall_LeavesTheOldOrTheNew)
{
    EXPECT_GT(killAtEachCall("killed"), 5);
}

TEST_F(InterruptedSettings, AProcessKilledInTheMiddleOfAnyWrite_LeavesTheOldOrTheNew)
{
    EXPECT_GT(killAtEachCall("halfway"), 5);
}

TEST_F(InterruptedSettings, ADiskThatIsFullFromAnyCallOn_LeavesTheOldWithAMessageOrTheNew)
{
    int failed = 0;
    for (int call = 0; call < kMostCalls && !HasFailure(); ++call) {
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
        EXPECT_EQ(names(), (std::vector<std::string>{kFile, "orvelcs.lock"}));
    }
    EXPECT_GT(failed, 5);
}

TEST_F(InterruptedSettings, ALimitOnTheSizeOfFiles_LeavesTheOld)
{
    givenOldSettings();
    ProgramRun change = changeTo("<Item>" + std::string(2000, 'x') + "</Item>");
    change.program = "/bin/sh";
    change.arguments.insert(change.arguments.begin(), {"-c", "ulimit -f 1; exec \"$0\" \"$@\"", ORVELCS_PROGRAM});
    expectResult(run(change), 1, "",
                 "orvelcs: config set: " + folder() + "/" + kFile + ": was not written to its end\n");
    EXPECT_EQ(settings(), kOldLine);
    EXPECT_EQ(names(), (std::vector<std::string>{kFile, "orvelcs.lock"}));
}

TEST_F(InterruptedSettings, ThroughASymbolicLink_ReplacesWhatItLeadsTo)
{
    std::filesystem::create_directory(folder());
    std::filesystem::create_directory(path("kept"));
    given("kept/settings", kOldLine);
    std::filesystem::create_symlink("../kept/settings", path("user") / kFile);
    ASSERT_EQ(run(changeTo(kNewItems)).status, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(path("user") / kFile));
    EXPECT_EQ(contents("kept/settings"), kNewLines);
}

TEST_F(InterruptedSettings, KeepTheirPermissions)
{
    givenOldSettings();
    ASSERT_EQ(::chmod((folder() + "/" + kFile).c_str(), 0640), 0);
    ASSERT_EQ(run(changeTo(kNewItems)).status, 0);
    struct stat found {};
    ASSERT_EQ(::stat((folder() + "/" + kFile).c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 07777U, 0640U);
}

TEST_F(InterruptedSettings, InAFolderWithTheLongestName_AreReplaced)
{
    std::string longest = folder();
    while (longest.size() < 259)
        longest += longest.size() % 50 == 0 ? '/' : 'f';
    ProgramRun change = changeTo(kNewItems);
    change.arguments.back() = longest;
    expectResult(run(change), 0, "", "");
    EXPECT_EQ(readFile(longest + "/" + kFile), kNewLines);
}

} // namespace
} // namespace Tests
