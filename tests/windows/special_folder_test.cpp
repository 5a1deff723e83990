#include <filesystem>
#include <string>

#include "embedded/base/path.h"
#include "embedded/diagnostics/fault_injection.h"
#include "platform/win32.h"
#include "support/local_application_data.h"
#include "support/platform_test.h"
#include "support/scoped_registry.h"
#include "support/scoped_variable.h"
#include "support/temporary_folder.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

class SpecialFolder : public PlatformTest {
protected:
    BOOL getFolder(BOOL create = FALSE) { return SHGetSpecialFolderPathW(nullptr, path, CSIDL_LOCAL_APPDATA, create); }

    TemporaryFolder folder;
    ScopedRegistry registry{folder, folder.path() / "registry.jsonl"};
    ScopedVariable data{"XDG_DATA_HOME"};
    wchar_t path[260] = L"before";
};

TEST_F(SpecialFolder, DataFolderOfTheUser_IsReturned)
{
    useLocalApplicationData(folder.path());
    EXPECT_EQ(getFolder(), TRUE);
    EXPECT_EQ(path, folder.path().wstring());
}

TEST_F(SpecialFolder, MissingFolder_IsCreatedOnlyOnRequest)
{
    const fs::path missing = folder.path() / "not there" / "nor this";
    useLocalApplicationData(missing);
    EXPECT_EQ(getFolder(), FALSE);
    EXPECT_FALSE(fs::exists(folder.path() / "not there"));
    EXPECT_EQ(getFolder(TRUE), TRUE);
    EXPECT_EQ(path, missing.wstring());
    EXPECT_TRUE(fs::is_directory(missing));
}

TEST_F(SpecialFolder, PathOf259Characters_IsReturned)
{
    fs::path longest = folder.path() / std::string(100, 'a');
    longest /= std::string(259 - longest.string().size() - 1, 'b');
    fs::create_directory(Embedded::systemPath(longest.parent_path()));
    fs::create_directory(Embedded::systemPath(longest));
    useLocalApplicationData(longest);
    EXPECT_EQ(getFolder(), TRUE);
    EXPECT_EQ(path, longest.wstring());
}

TEST_F(SpecialFolder, InjectedFault_FailsTheCall)
{
    useLocalApplicationData(folder.path());
    const Embedded::ScopedFault fault({.call = "SHGetSpecialFolderPathW", .code = {}});
    EXPECT_EQ(getFolder(), FALSE);
}

} // namespace
} // namespace Tests
