// A settings file of the user's that is there and cannot be read: never taken for one that is not there.
#include <sys/stat.h>
#include <unistd.h>

#include "cli/command_line_test.h"

namespace Tests {
namespace {

using testing::HasSubstr;
using CommandWords = std::vector<std::string>;

constexpr const char* kNtfItem =
    "<Item><Version>1.0</Version><SourceCs>EPSG:4275</SourceCs><TargetCs>EPSG:4326</TargetCs>"
    "<Name>NTF to WGS 84 (1)</Name><Type>2</Type><Note></Note></Item>";

class UnreadableSettings : public CommandLineTest {
protected:
    UnreadableSettings() { std::filesystem::create_directory(path("user")); }

    std::string userFolder() const { return path("user").string(); }
    std::filesystem::path settings() const { return path("user/TransformationSetting.xml"); }
    void givenSettings(const std::string& bytes) const { given("user/TransformationSetting.xml", bytes); }
    /// What asks the user's configuration, or changes it.
    std::vector<CommandWords> commands() const
    {
        std::vector<CommandWords> commands = {
            {"transform", "EPSG:4275", "EPSG:4326"},
            {"transformation", "EPSG:4275", "EPSG:4326"},
            {"config", "get", "--user"},
            {"config", "set", "-", "--user"},
            {"config", "add", "--source", "A", "--target", "B", "--name", "n", "--type", "path", "--user"}};
        for (CommandWords& command : commands)
            command.insert(command.end(), {"--json", "--user-dir", userFolder()});
        return commands;
    }
    void expectRefusal(const CommandWords& command, const std::string& reason) const
    {
        const ProgramResult result = run(command, "48 2\n");
        EXPECT_EQ(result.status, 1) << command[0];
        EXPECT_THAT(result.errors, HasSubstr(settings().string() + ": " + reason + '\n')) << command[0];
        EXPECT_TRUE(Json::accept(result.output)) << command[0] << result.output; // one document and nothing behind it
        EXPECT_THAT(result.output, testing::Not(HasSubstr("48."))) << command[0];
    }
    void expectRefusals(const std::string& reason) const
    {
        for (const CommandWords& command : commands())
            expectRefusal(command, reason);
    }
    /// The permissions of files count for it, whoever runs the tests.
    ProgramResult runWithoutPrivileges(const CommandWords& arguments) const
    {
        ProgramRun programRun;
        programRun.arguments = arguments;
        programRun.input = "48 2\n";
        if (::geteuid() == 0) {
            programRun.program = "/usr/bin/setpriv";
            programRun.arguments.insert(programRun.arguments.begin(),
                                        {"--bounding-set=-dac_override,-dac_read_search", ORVELCS_PROGRAM});
        }
        return run(programRun);
    }
};

TEST_F(UnreadableSettings, AFolder_IsRefused)
{
    std::filesystem::create_directory(settings());
    expectRefusals("is a folder");
}

TEST_F(UnreadableSettings, APipe_IsRefusedWithoutWaitingForItsWriter)
{
    ASSERT_EQ(::mkfifo(settings().c_str(), 0600), 0);
    expectRefusals("is not a regular file");
}

TEST_F(UnreadableSettings, ALinkToADeviceWithoutEnd_IsRefused)
{
    std::filesystem::create_symlink("/dev/zero", settings());
    expectRefusals("is not a regular file");
}

TEST_F(UnreadableSettings, ALinkToItself_IsRefused)
{
    std::filesystem::create_symlink(settings(), settings());
    expectRefusals("cannot be looked up: Too many levels of symbolic links");
}

TEST_F(UnreadableSettings, WithoutPermission_IsRefused)
{
    givenSettings(kNtfItem);
    std::filesystem::permissions(settings(), std::filesystem::perms::none);
    for (const CommandWords& command : commands()) {
        if (command[1] == "set")
            continue; // it need not read what it replaces
        const ProgramResult result = runWithoutPrivileges(command);
        EXPECT_EQ(result.status, 1) << command[0];
        EXPECT_THAT(result.errors, HasSubstr(settings().string() + ": cannot be opened: Permission denied\n"));
    }
}

TEST_F(UnreadableSettings, InAFolderThatMayNotBeSearched_AreNotTakenForAbsent)
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

TEST_F(UnreadableSettings, NotUtf8_AreRefused)
{
    givenSettings("<Item>\xFF</Item>");
    for (const CommandWords& command : commands())
        if (command[1] != "set")
            expectRefusal(command, "is not UTF-8");
}

TEST_F(UnreadableSettings, DoNotKeepTheRegistryFromBeingCleared)
{
    std::filesystem::create_directory(settings());
    const ProgramResult result = run({"config", "clear", "--user", "--user-dir", userFolder()});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.errors, HasSubstr(settings().string() + ": note: is a folder\n"));
}

TEST_F(UnreadableSettings, AreNotAskedWhereTheDrawingAnswers)
{
    givenSettings("\xFF");
    givenDrawing("plan.qedb");
    ASSERT_EQ(run({"config", "set", "-", "--drawing", "plan.qedb"}, kNtfItem).status, 0);
    expectResult(
        run({"transform", "EPSG:4275", "EPSG:4326", "--drawing", "plan.qedb", "--user-dir", userFolder()}, "48 2\n"), 0,
        "47.9999346059 1.9992750467\n", "");
}

TEST_F(UnreadableSettings, APipe_IsNotOpenedWhereTheDrawingAnswers)
{
    ASSERT_EQ(::mkfifo(settings().c_str(), 0600), 0);
    givenDrawing("plan.qedb");
    ASSERT_EQ(run({"config", "set", "-", "--drawing", "plan.qedb"}, kNtfItem).status, 0);
    expectResult(run({"transformation", "EPSG:4275", "EPSG:4326", "--drawing", "plan.qedb", "--user-dir", userFolder(),
                      "--json"}),
                 0, "{\n  \"name\": \"NTF to WGS 84 (1)\",\n  \"kind\": 2\n}\n", "");
}

TEST_F(UnreadableSettings, AreRefusedWhereTheDrawingDoesNotAnswer)
{
    givenSettings("\xFF");
    givenDrawing("plan.qedb");
    ASSERT_EQ(run({"config", "set", "-", "--drawing", "plan.qedb"}, kNtfItem).status, 0);
    const ProgramResult result =
        run({"transformation", "EPSG:4230", "EPSG:4326", "--drawing", "plan.qedb", "--user-dir", userFolder()});
    expectResult(result, 1, "", "orvelcs: transformation: " + settings().string() + ": is not UTF-8\n");
}

TEST_F(UnreadableSettings, ThatAreNotThere_AreNoFailure)
{
    EXPECT_EQ(run({"transform", "EPSG:4275", "EPSG:4326", "--user-dir", userFolder()}, "48 2\n").status, 0);
    EXPECT_EQ(run({"transformation", "EPSG:4275", "EPSG:4326", "--user-dir", userFolder()}).status, 3);
    std::filesystem::create_symlink(path("nothing"), settings());
    EXPECT_EQ(run({"transform", "EPSG:4275", "EPSG:4326", "--user-dir", userFolder()}, "48 2\n").status, 0);
}

} // namespace
} // namespace Tests
