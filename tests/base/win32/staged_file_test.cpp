// Files that cannot be replaced on Windows, and names that need special care.
#include "base/staged_file_test.h"

#include <windows.h>

#include "embedded/base/path.h"
#include "embedded/base/win32/file_handle.h"
#include "support/win32/deep_folder.h"

namespace Tests {
namespace {

using namespace Embedded;
namespace fs = std::filesystem;

class ReplacedFile : public StagedFileTest {
protected:
    static FileHandle openedWithoutSharing(const fs::path& path)
    {
        FileHandle handle(CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        EXPECT_TRUE(handle.isOpen());
        return handle;
    }
};

TEST_F(ReplacedFile, FileOpenedExclusivelyByAnotherProgram_IsNotReplaced)
{
    writeFile(file, "old");
    {
        const FileHandle held = openedWithoutSharing(file);
        expectRefusal(file, "Permission denied");
    }
    EXPECT_EQ(readFile(file), "old");
    EXPECT_EQ(folder.names(), Names{"a.txt"});
}

TEST_F(ReplacedFile, WriteProtectedFile_IsNotReplaced)
{
    writeFile(file, "old");
    ASSERT_TRUE(SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY));
    expectRefusal(file, "Permission denied");
    EXPECT_NE(GetFileAttributesW(file.c_str()) & FILE_ATTRIBUTE_READONLY, 0U);
    ASSERT_TRUE(SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL));
    EXPECT_EQ(readFile(file), "old");
    EXPECT_EQ(folder.names(), Names{"a.txt"});
}

TEST_F(ReplacedFile, PathBelowAFile_IsRefused)
{
    writeFile(file, "old");
    expectRefusal(file / "b.txt", "No such file or directory");
    EXPECT_EQ(readFile(file), "old");
}

TEST_F(ReplacedFile, DeviceName_IsRefused)
{
    EXPECT_EQ(replace("NUL", "new"), "cannot be written: Invalid argument");
}

TEST_F(ReplacedFile, InvalidName_IsRefused)
{
    expectRefusal(folder.path() / "a?b.txt", "not a valid file name");
}

TEST_F(ReplacedFile, FileWithAVeryLongPath_IsReplaced)
{
    const DeepFolder deep(folder.path(), 400);
    const fs::path name = deep.path() / "a.txt";
    write(name, "first");
    write(name, "second");
    EXPECT_EQ(readFile(systemPath(name)), "second");
}

} // namespace
} // namespace Tests
