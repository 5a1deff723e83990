// The settings file is a device, or the file of the registry is damaged.
#include "cli/command_line_test.h"

namespace Tests {
namespace {

using UserStores = CommandLineTest;

TEST_F(UserStores, SettingsFileThatIsADevice_IsRefused)
{
    std::filesystem::create_symlink("/dev/full", path(kSettingsFile));
    const std::string folder = path("").string();
    expectResult(run({"config", "set", "-", "--user", "--user-dir", folder}, "<Item></Item>"), 1, "",
                 testing::HasSubstr("is not a regular file\n"));
    EXPECT_EQ(run({"config", "get", "--user", "--user-dir", folder}).status, 1);
}

TEST_F(UserStores, DamagedRegistryFile_IsReportedAndNotChanged)
{
    given("registry", "not a registry\n");
    EXPECT_EQ(run({"config", "get", "--registry-store", "--registry", "registry"}).status, 1);
    const ProgramResult result =
        run({"config", "clear", "--user", "--json", "--user-dir", path("").string(), "--registry", "registry"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(Json::parse(result.output)["result"], false);
    EXPECT_THAT(result.errors, testing::HasSubstr("registry"));
    EXPECT_EQ(contents("registry"), "not a registry\n");
}

} // namespace
} // namespace Tests
