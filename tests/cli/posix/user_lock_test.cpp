// The lock file of the user's stores: who waits for it, for how long, and where it lies.
#include <chrono>

#include "cli/command_line_test.h"
#include "cli/posix/held_lock.h"

namespace Tests {
namespace {

using testing::HasSubstr;

constexpr const char* kOneItem = "<Item>a</Item>";
constexpr const char* kOneLine = "<Item>a</Item>\r\n";
constexpr const char* kSettingsName = "TransformationSetting.xml";
constexpr const char* kLockName = "orvelcs.lock";

class UserLock : public CommandLineTest {
protected:
    ProgramResult runAsUser(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.end(), {"--user", "--user-dir", path("").string(), "--registry", "registry"});
        return run(arguments, kOneItem);
    }
    static std::vector<std::vector<std::string>> changes()
    {
        return {{"config", "set", "-"},
                {"config", "clear"},
                {"config", "add", "--source", "A", "--target", "B", "--name", "EPSG:1241", "--type", "transformation"}};
    }
    ProgramResult runWithHome(const std::string& home, std::vector<std::string> arguments) const
    {
        ProgramRun programRun;
        programRun.arguments = std::move(arguments);
        programRun.input = kOneItem;
        programRun.environment["HOME"] = home;
        return run(programRun);
    }
};

TEST_F(UserLock, HeldByAnother_IsNamedWhenTheWaitIsOver)
{
    given(kSettingsName, kOneLine);
    const HeldLock held(path(kLockName));
    for (std::vector<std::string> change : changes()) {
        const std::string command = change[0] + " " + change[1];
        change.insert(change.end(), {"--wait", "0"});
        expectResult(
            runAsUser(change), 1, "",
            "orvelcs: " + command + ": " + path(kLockName).string() +
                ": another process holds it, after 0 s still; try again, or wait longer with --wait SECONDS\n");
    }
    EXPECT_EQ(contents(kSettingsName), kOneLine);
    EXPECT_EQ(files(), (std::vector<std::string>{kSettingsName, kLockName}));
}

TEST_F(UserLock, HeldByAnother_IsWaitedForAsLongAsAsked)
{
    const HeldLock held(path(kLockName));
    const auto began = std::chrono::steady_clock::now();
    const ProgramResult result = runAsUser({"config", "set", "-", "--wait", "0.2"});
    EXPECT_GE(std::chrono::steady_clock::now() - began, std::chrono::milliseconds(200));
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.errors, HasSubstr("after 0.2 s still"));
}

TEST_F(UserLock, HeldByAnother_InJson_IsADocumentToo)
{
    const HeldLock held(path(kLockName));
    const ProgramResult result = runAsUser({"config", "set", "-", "--wait", "0", "--json"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(Json::parse(result.output), (Json{{"result", false}, {"events", Json::array()}}));
}

TEST_F(UserLock, HeldByAnother_KeepsOutNoReaderAndNoDrawing)
{
    given(kSettingsName, kOneLine);
    givenDrawing("a.qedb");
    const HeldLock held(path(kLockName));
    expectResult(runAsUser({"config", "get", "--wait", "0"}), 0, kOneItem, "");
    EXPECT_EQ(run({"transformation", "EPSG:4275", "EPSG:4326", "--user-dir", path("").string(), "--wait", "0"}).status,
              3);
    EXPECT_EQ(run({"config", "set", "-", "--drawing", "a.qedb", "--wait", "0"}, kOneItem).status, 0);
}

TEST_F(UserLock, ThatCannotBeOpened_IsNamed)
{
    std::filesystem::create_directory(path(kLockName));
    expectResult(runAsUser({"config", "set", "-"}), 1, "",
                 "orvelcs: config set: " + path(kLockName).string() + ": cannot be opened: Is a directory\n");
    std::filesystem::remove(path(kLockName));
    std::filesystem::create_symlink(path("other"), path(kLockName));
    EXPECT_THAT(runAsUser({"config", "clear"}).errors, HasSubstr("orvelcs.lock: cannot be opened: "));
    EXPECT_EQ(files(), std::vector<std::string>{kLockName}) << "a link is not followed";
}

TEST_F(UserLock, LiesBesideTheFileThatALinkLeadsTo)
{
    std::filesystem::create_directory(path("kept"));
    given("kept/settings", "");
    std::filesystem::create_symlink("kept/settings", path(kSettingsName));
    const HeldLock held(path("kept") / kLockName);
    EXPECT_EQ(runAsUser({"config", "set", "-", "--wait", "0"}).status, 1);
    EXPECT_EQ(files(), (std::vector<std::string>{kSettingsName, "kept"}));
}

TEST_F(UserLock, InAHomeWithoutFolders_MakesThem)
{
    const std::string home = path("home").string();
    ASSERT_EQ(runWithHome(home, {"config", "set", "-", "--user", "-q"}).status, 0);
    EXPECT_EQ(contents(std::string("home/.local/share/Zentara/User Geospatial Coordinate Systems/") + kSettingsName),
              kOneLine);
}

TEST_F(UserLock, WithoutAHome_HasNoFolder)
{
    expectResult(runWithHome("", {"config", "set", "-", "--user"}), 1, "",
                 "orvelcs: config set: settings file: there is no folder for it; name one with --user-dir\n");
}

} // namespace
} // namespace Tests
