// A settings file that cannot be read is refused, never treated as missing.
#include <sys/stat.h>

#include "cli/command_line_test.h"
#include "cli/posix/unprivileged_run.h"

namespace Tests {
namespace {

using testing::HasSubstr;

const std::string kNtfItem = configurationItem("EPSG:4275", "EPSG:4326", "NTF to WGS 84 (1)", 2);

class UnreadableSettings : public CommandLineTest {
protected:
    UnreadableSettings() { std::filesystem::create_directory(path("user")); }

    std::string userFolder() const { return path("user").string(); }
    std::filesystem::path settings() const { return path(std::string("user/") + kSettingsFile); }
    void givenSettings(const std::string& bytes) const { writeFile(settings(), bytes); }
    /// Commands that read or change the user's configuration.
    std::vector<Arguments> commands() const
    {
        std::vector<Arguments> commands = {
            {"transform", "EPSG:4275", "EPSG:4326"},
            {"transformation", "EPSG:4275", "EPSG:4326"},
            {"config", "get", "--user"},
            {"config", "set", "-", "--user"},
            {"config", "add", "--source", "A", "--target", "B", "--name", "n", "--type", "path", "--force", "--user"}};
        for (Arguments& command : commands)
            command = concatenate(command, {"--json", "--user-dir", userFolder()});
        return commands;
    }
    void expectRefusal(const Arguments& command, const std::string& reason) const
    {
        const ProgramResult result = run(command, "48 2\n");
        EXPECT_EQ(result.status, 1) << command[0];
        EXPECT_THAT(result.errors, HasSubstr(settings().string() + ": " + reason + '\n')) << command[0];
        EXPECT_TRUE(Json::accept(result.output)) << command[0] << result.output; // one whole document
        EXPECT_THAT(result.output, testing::Not(HasSubstr("48."))) << command[0];
    }
    void expectRefusals(const std::string& reason) const
    {
        for (const Arguments& command : commands())
            expectRefusal(command, reason);
    }
    ProgramResult runWithoutPrivileges(const Arguments& arguments) const
    {
        ProgramRun programRun;
        programRun.arguments = arguments;
        programRun.input = "48 2\n";
        return run(withoutPrivileges(programRun));
    }
};

TEST_F(UnreadableSettings, Folder_IsRefused)
{
    std::filesystem::create_directory(settings());
    expectRefusals("is a folder");
}

TEST_F(UnreadableSettings, Pipe_IsRefusedWithoutWaitingForAWriter)
{
    ASSERT_EQ(::mkfifo(settings().c_str(), 0600), 0);
    expectRefusals("is not a regular file");
}

TEST_F(UnreadableSettings, LinkToAnEndlessDevice_IsRefused)
{
    std::filesystem::create_symlink("/dev/zero", settings());
    expectRefusals("is not a regular file");
}

TEST_F(UnreadableSettings, LinkToItself_IsRefused)
{
    std::filesystem::create_symlink(settings(), settings());
    expectRefusals("cannot be looked up: Too many levels of symbolic links");
}

TEST_F(UnreadableSettings, FileWithoutPermission_IsRefused)
{
    givenSettings(kNtfItem);
    std::filesystem::permissions(settings(), std::filesystem::perms::none);
    for (const Arguments& command : commands()) {
        if (command[1] == "set")
            continue; // the command replaces the file without reading it
        const ProgramResult result = runWithoutPrivileges(command);
        EXPECT_EQ(result.status, 1) << command[0];
        EXPECT_THAT(result.errors, HasSubstr(settings().string() + ": cannot be opened: Permission denied\n"));
    }
}

TEST_F(UnreadableSettings, FolderWithoutPermission_IsReported)
{
    givenSettings(kNtfItem);
    std::filesystem::permissions(path("user"), std::filesystem::perms::none);
    const ProgramResult result =
        runWithoutPrivileges({"transform", "EPSG:4275", "EPSG:4326", "--user-dir", userFolder()});
    std::filesystem::permissions(path("user"), std::filesystem::perms::owner_all);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.errors, HasSubstr("TransformationSetting.xml: cannot be looked up: Permission denied\n"));
}

TEST_F(UnreadableSettings, FileThatIsNotUtf8_IsRefused)
{
    givenSettings("<Item>\xFF</Item>");
    for (const Arguments& command : commands())
        if (command[1] != "set")
            expectRefusal(command, "is not UTF-8");
}

TEST_F(UnreadableSettings, Clear_EmptiesTheRegistryDespiteUnreadableSettings)
{
    std::filesystem::create_directory(settings());
    expectResult(run({"config", "clear", "--user", "--user-dir", userFolder()}), 0, "registry store: emptied\n",
                 HasSubstr(settings().string() + ": note: is a folder\n"));
}

TEST_F(UnreadableSettings, TransformationInTheDrawing_DoesNotReadTheSettings)
{
    givenSettings("\xFF");
    givenConfiguredDrawing("plan.qedb", kNtfItem);
    expectResult(
        run({"transform", "EPSG:4275", "EPSG:4326", "--drawing", "plan.qedb", "--user-dir", userFolder()}, "48 2\n"), 0,
        "47.9999346059 1.9992750467\n", "");
}

TEST_F(UnreadableSettings, TransformationInTheDrawing_DoesNotOpenAPipe)
{
    ASSERT_EQ(::mkfifo(settings().c_str(), 0600), 0);
    givenConfiguredDrawing("plan.qedb", kNtfItem);
    expectResult(run({"transformation", "EPSG:4275", "EPSG:4326", "--drawing", "plan.qedb", "--user-dir", userFolder(),
                      "--json"}),
                 0, "{\n  \"name\": \"NTF to WGS 84 (1)\",\n  \"kind\": 2\n}\n", "");
}

TEST_F(UnreadableSettings, TransformationThatTheDrawingLacks_ReadsTheSettings)
{
    givenSettings("\xFF");
    givenConfiguredDrawing("plan.qedb", kNtfItem);
    const ProgramResult result =
        run({"transformation", "EPSG:4230", "EPSG:4326", "--drawing", "plan.qedb", "--user-dir", userFolder()});
    expectResult(result, 1, "", "orvelcs: transformation: " + settings().string() + ": is not UTF-8\n");
}

TEST_F(UnreadableSettings, MissingFile_IsNotAFailure)
{
    EXPECT_EQ(run({"transform", "EPSG:4275", "EPSG:4326", "--user-dir", userFolder()}, "48 2\n").status, 0);
    EXPECT_EQ(run({"transformation", "EPSG:4275", "EPSG:4326", "--user-dir", userFolder()}).status, 3);
    std::filesystem::create_symlink(path("nothing"), settings());
    EXPECT_EQ(run({"transform", "EPSG:4275", "EPSG:4326", "--user-dir", userFolder()}, "48 2\n").status, 0);
}

} // namespace
} // namespace Tests
