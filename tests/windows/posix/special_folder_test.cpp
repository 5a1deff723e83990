// Where the stand-in looks for the folder, and what it does where Windows promises nothing.
#include <filesystem>
#include <string>

#include "embedded/base/text.h"
#include "embedded/diagnostics/fault_injection.h"
#include "platform/windows.h"
#include "support/platform_test.h"
#include "support/scoped_variable.h"
#include "support/temporary_folder.h"

namespace {

namespace fs = std::filesystem;
using Tests::ScopedVariable;

class SpecialFolderStandIn : public Tests::PlatformTest {
protected:
    BOOL ask(BOOL create = FALSE) { return SHGetSpecialFolderPathW(nullptr, path, CSIDL_LOCAL_APPDATA, create); }
    static std::wstring wide(const fs::path& folder) { return Embedded::wideFromUtf8(folder.string()); }

    Tests::TemporaryFolder folder;
    ScopedVariable home{"HOME", folder.path().string()};
    ScopedVariable data{"XDG_DATA_HOME"};
    wchar_t path[260] = L"before";
};

TEST_F(SpecialFolderStandIn, WithoutTheVariable_TheFolderIsInTheHome)
{
    fs::create_directories(folder.path() / ".local/share");
    EXPECT_EQ(ask(), TRUE);
    EXPECT_EQ(path, wide(folder.path() / ".local/share"));
}

TEST_F(SpecialFolderStandIn, RelativeFolder_IsIgnored)
{
    fs::create_directories(folder.path() / ".local/share");
    const ScopedVariable set("XDG_DATA_HOME", "relative");
    EXPECT_EQ(ask(), TRUE);
    EXPECT_EQ(path, wide(folder.path() / ".local/share"));
}

TEST_F(SpecialFolderStandIn, MissingFolderInTheHome_IsCreatedOnlyOnRequest)
{
    EXPECT_EQ(ask(), FALSE);
    EXPECT_STREQ(path, L"");
    EXPECT_TRUE(fs::is_empty(folder.path()));
    EXPECT_EQ(ask(TRUE), TRUE);
    EXPECT_TRUE(fs::is_directory(folder.path() / ".local/share"));
}

TEST_F(SpecialFolderStandIn, WithoutAHome_ThereIsNoFolder)
{
    const ScopedVariable none("HOME");
    EXPECT_EQ(ask(TRUE), FALSE);
}

TEST_F(SpecialFolderStandIn, APathOf260CharactersDoesNotFit)
{
    fs::path longer = folder.path() / std::string(100, 'a');
    longer /= std::string(260 - longer.string().size() - 1, 'b');
    fs::create_directories(longer);
    const ScopedVariable set("XDG_DATA_HOME", longer.string());
    EXPECT_EQ(ask(), FALSE);
}

TEST_F(SpecialFolderStandIn, OtherFoldersAndNullAreRefused)
{
    const ScopedVariable set("XDG_DATA_HOME", folder.path().string());
    EXPECT_EQ(SHGetSpecialFolderPathW(nullptr, path, 26, FALSE), FALSE);
    EXPECT_EQ(SHGetSpecialFolderPathW(nullptr, nullptr, CSIDL_LOCAL_APPDATA, FALSE), FALSE);
}

TEST_F(SpecialFolderStandIn, Failure_LeavesAnEmptyPath)
{
    const ScopedVariable set("XDG_DATA_HOME", folder.path().string());
    const Embedded::ScopedFault fault({.call = "SHGetSpecialFolderPathW", .code = {}});
    EXPECT_EQ(ask(), FALSE);
    EXPECT_STREQ(path, L"");
}

} // namespace
