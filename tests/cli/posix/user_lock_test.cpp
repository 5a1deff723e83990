// The lock file of the user's stores.
#include <chrono>

#include "cli/command_line_test.h"
#include "cli/posix/held_lock.h"

namespace Tests {
namespace {

using testing::HasSubstr;

constexpr const char* kOneItem = "<Item>a</Item>";
constexpr const char* kOneLine = "<Item>a</Item>\r\n";

class UserLock : public CommandLineTest {
protected:
    ProgramResult runAsUser(const Arguments& arguments) const
    {
        return run(concatenate(arguments, {"--user", "--user-dir", path("").string(), "--registry", "registry"}),
                   kOneItem);
    }
    static std::vector<Arguments> changes()
    {
        return {{"config", "set", "-"},
                {"config", "clear"},
                {"config", "add", "--source", "A", "--target", "B", "--name", "EPSG:1241", "--type", "transformation",
                 "--force"}};
    }
    ProgramResult runWithHome(const std::string& home, Arguments arguments) const
    {
        ProgramRun programRun;
        programRun.arguments = std::move(arguments);
        programRun.input = kOneItem;
        programRun.environment["HOME"] = home;
        return run(programRun);
    }
};

TEST_F(UserLock, HeldLock_IsReportedWhenTheWaitIsOver)
{
    given(kSettingsFile, kOneLine);
    const HeldLock held(path(kLockFile));
    for (const Arguments& change : changes())
        expectResult(
            runAsUser(concatenate(change, {"--wait", "0"})), 1, "",
            "orvelcs: " + change[0] + " " + change[1] + ": " + path(kLockFile).string() +
                ": another process holds it, after 0 s still; try again, or wait longer with --wait SECONDS\n");
    EXPECT_EQ(contents(kSettingsFile), kOneLine);
    EXPECT_EQ(files(), (std::vector<std::string>{kSettingsFile, kLockFile}));
}

TEST_F(UserLock, WaitOption_SetsTheTimeToWait)
{
    const HeldLock held(path(kLockFile));
    const auto start = std::chrono::steady_clock::now();
    const ProgramResult result = runAsUser({"config", "set", "-", "--wait", "0.2"});
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(200));
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("after 0.2 s still"));
}

TEST_F(UserLock, HeldLock_PrintsAJsonDocument)
{
    const HeldLock held(path(kLockFile));
    const ProgramResult result = runAsUser({"config", "set", "-", "--wait", "0", "--json"});
    EXPECT_EQ(result.status, 1);
    const Json json = Json::parse(result.output);
    EXPECT_EQ(json["result"], false);
    EXPECT_EQ(json["events"], Json::array());
    EXPECT_EQ(errorLine(json["error"]), result.errors);
}

TEST_F(UserLock, HeldLock_DoesNotBlockReadersAndDrawings)
{
    given(kSettingsFile, kOneLine);
    givenDrawing("a.qedb");
    const HeldLock held(path(kLockFile));
    expectResult(runAsUser({"config", "get", "--wait", "0"}), 0, kOneItem, "");
    EXPECT_EQ(run({"transformation", "EPSG:4275", "EPSG:4326", "--user-dir", path("").string(), "--wait", "0"}).status,
              3);
    EXPECT_EQ(run({"config", "set", "-", "--drawing", "a.qedb", "--wait", "0"}, kOneItem).status, 0);
}

TEST_F(UserLock, LockFileThatCannotBeOpened_IsReported)
{
    std::filesystem::create_directory(path(kLockFile));
    expectResult(runAsUser({"config", "set", "-"}), 1, "",
                 "orvelcs: config set: " + path(kLockFile).string() + ": cannot be opened: Is a directory\n");
    std::filesystem::remove(path(kLockFile));
    std::filesystem::create_symlink(path("other"), path(kLockFile));
    EXPECT_THAT(runAsUser({"config", "clear"}).errors, HasSubstr("orvelcs.lock: cannot be opened: "));
    EXPECT_EQ(files(), std::vector<std::string>{kLockFile}) << "a link is not followed";
}

TEST_F(UserLock, LockFile_IsBesideTheTargetOfALink)
{
    std::filesystem::create_directory(path("kept"));
    given("kept/settings", "");
    std::filesystem::create_symlink("kept/settings", path(kSettingsFile));
    const HeldLock held(path("kept") / kLockFile);
    EXPECT_EQ(runAsUser({"config", "set", "-", "--wait", "0"}).status, 1);
    EXPECT_EQ(files(), (std::vector<std::string>{kSettingsFile, "kept"}));
}

TEST_F(UserLock, MissingFoldersInTheHome_AreCreated)
{
    const std::string home = path("home").string();
    ASSERT_EQ(runWithHome(home, {"config", "set", "-", "--user", "-q"}).status, 0);
    EXPECT_EQ(contents(std::string("home/.local/share/Zentara/User Geospatial Coordinate Systems/") + kSettingsFile),
              kOneLine);
}

TEST_F(UserLock, MissingHome_IsReported)
{
    expectResult(runWithHome("", {"config", "set", "-", "--user"}), 1, "",
                 "orvelcs: config set: settings file: there is no folder for it; name one with --user-dir\n");
}

} // namespace
} // namespace Tests
