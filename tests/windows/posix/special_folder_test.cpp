// The folder of the stand-in, and its behaviour where Windows promises nothing.
#include <filesystem>
#include <string>

#include "embedded/base/text.h"
#include "embedded/diagnostics/fault_injection.h"
#include "platform/win32.h"
#include "support/platform_test.h"
#include "support/scoped_variable.h"
#include "support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using Tests::ScopedVariable;

class SpecialFolderStandIn : public Tests::PlatformTest {
protected:
    BOOL getFolder(BOOL create = FALSE) { return SHGetSpecialFolderPathW(nullptr, path, CSIDL_LOCAL_APPDATA, create); }
    static std::wstring wide(const fs::path& folder) { return Embedded::wideFromUtf8(folder.string()); }

    Tests::TemporaryFolder folder;
    ScopedVariable home{"HOME", folder.path().string()};
    ScopedVariable data{"XDG_DATA_HOME"};
    wchar_t path[260] = L"before";
};

TEST_F(SpecialFolderStandIn, MissingVariable_SelectsTheFolderInTheHome)
{
    fs::create_directories(folder.path() / ".local/share");
    EXPECT_EQ(getFolder(), TRUE);
    EXPECT_EQ(path, wide(folder.path() / ".local/share"));
}

TEST_F(SpecialFolderStandIn, RelativeFolder_IsIgnored)
{
    fs::create_directories(folder.path() / ".local/share");
    const ScopedVariable set("XDG_DATA_HOME", "relative");
    EXPECT_EQ(getFolder(), TRUE);
    EXPECT_EQ(path, wide(folder.path() / ".local/share"));
}

TEST_F(SpecialFolderStandIn, MissingFolderInTheHome_IsCreatedOnlyOnRequest)
{
    EXPECT_EQ(getFolder(), FALSE);
    EXPECT_STREQ(path, L"");
    EXPECT_TRUE(fs::is_empty(folder.path()));
    EXPECT_EQ(getFolder(TRUE), TRUE);
    EXPECT_TRUE(fs::is_directory(folder.path() / ".local/share"));
}

TEST_F(SpecialFolderStandIn, MissingHome_FailsTheCall)
{
    const ScopedVariable none("HOME");
    EXPECT_EQ(getFolder(TRUE), FALSE);
}

TEST_F(SpecialFolderStandIn, PathOf260Characters_IsRefused)
{
    fs::path longer = folder.path() / std::string(100, 'a');
    longer /= std::string(260 - longer.string().size() - 1, 'b');
    fs::create_directories(longer);
    const ScopedVariable set("XDG_DATA_HOME", longer.string());
    EXPECT_EQ(getFolder(), FALSE);
}

TEST_F(SpecialFolderStandIn, OtherFoldersAndNull_AreRefused)
{
    const ScopedVariable set("XDG_DATA_HOME", folder.path().string());
    EXPECT_EQ(SHGetSpecialFolderPathW(nullptr, path, 26, FALSE), FALSE);
    EXPECT_EQ(SHGetSpecialFolderPathW(nullptr, nullptr, CSIDL_LOCAL_APPDATA, FALSE), FALSE);
}

TEST_F(SpecialFolderStandIn, Failure_LeavesAnEmptyPath)
{
    const ScopedVariable set("XDG_DATA_HOME", folder.path().string());
    const Embedded::ScopedFault fault({.call = "SHGetSpecialFolderPathW", .code = {}});
    EXPECT_EQ(getFolder(), FALSE);
    EXPECT_STREQ(path, L"");
}

} // namespace
