// Paths for the calls of Windows, and the messages of its error numbers.
#include "embedded/base/path.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "embedded/base/system_error.h"

namespace Tests {
namespace {

using Embedded::fullPath;
using Embedded::systemPath;

std::string systemMessage(DWORD error)
{
    return Embedded::systemMessage(std::error_code(static_cast<int>(error), std::system_category()));
}

TEST(SystemPath, PathOnADrive_HasThePrefixForLongNames)
{
    EXPECT_EQ(systemPath(LR"(C:\plans\a.qedb)").wstring(), LR"(\\?\C:\plans\a.qedb)");
    EXPECT_EQ(systemPath(L"C:/plans/./old/../a.qedb").wstring(), LR"(\\?\C:\plans\a.qedb)");
}

TEST(SystemPath, PathOnAServer_KeepsTheServersName)
{
    EXPECT_EQ(systemPath(LR"(\\server\plans\a.qedb)").wstring(), LR"(\\?\UNC\server\plans\a.qedb)");
    EXPECT_EQ(systemPath(L"//server/plans/a.qedb").wstring(), LR"(\\?\UNC\server\plans\a.qedb)");
    EXPECT_EQ(fullPath(L"//server/plans/a.qedb").wstring(), LR"(\\server\plans\a.qedb)");
}

TEST(SystemPath, PathWithAPrefix_StaysUnchanged)
{
    EXPECT_EQ(systemPath(LR"(\\?\C:\plans\a.qedb)").wstring(), LR"(\\?\C:\plans\a.qedb)");
    EXPECT_EQ(systemPath(LR"(\\.\pipe\a)").wstring(), LR"(\\.\pipe\a)");
}

TEST(SystemPath, RelativePath_BecomesAFullPath)
{
    EXPECT_EQ(systemPath(L"a.qedb").wstring(), LR"(\\?\)" + (std::filesystem::current_path() / "a.qedb").wstring());
}

TEST(SystemPath, DeviceName_HasTheDevicePrefix)
{
    EXPECT_EQ(systemPath(L"NUL").wstring(), LR"(\\.\NUL)");
}

TEST(SystemPath, VeryLongPath_IsNotTruncated)
{
    const std::wstring name = LR"(C:\)" + std::wstring(5000, L'x');
    EXPECT_EQ(systemPath(name).wstring(), LR"(\\?\)" + name);
}

TEST(SystemPath, EmptyPath_StaysEmpty)
{
    EXPECT_EQ(systemPath(L"").wstring(), L"");
}

TEST(SystemMessage, CommonReason_HasTheMessageOfTheStandardLibrary)
{
    EXPECT_EQ(systemMessage(ERROR_FILE_NOT_FOUND), "No such file or directory");
    EXPECT_EQ(systemMessage(ERROR_PATH_NOT_FOUND), "No such file or directory");
    EXPECT_EQ(systemMessage(ERROR_ACCESS_DENIED), "Permission denied");
    EXPECT_EQ(systemMessage(ERROR_DISK_FULL), "No space left on device");
    EXPECT_EQ(systemMessage(ERROR_IO_DEVICE), "Input/output error");
}

TEST(SystemMessage, OtherReason_HasAMessageOfItsOwn)
{
    EXPECT_EQ(systemMessage(ERROR_SHARING_VIOLATION), "in use by another program");
    EXPECT_EQ(systemMessage(ERROR_MOD_NOT_FOUND), "it, or a library that it needs, cannot be found");
    EXPECT_TRUE(systemMessage(ERROR_UNABLE_TO_REMOVE_REPLACED).ends_with(" (1175)"));
}

} // namespace
} // namespace Tests
