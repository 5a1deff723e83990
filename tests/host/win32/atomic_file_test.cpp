// The two steps in which this system replaces a file, and what may stand in their way.
#include "host/atomic_file_test.h"

#include <windows.h>

#include "embedded/foundation/atomic_file.h"
#include "embedded/foundation/system_path.h"
#include "embedded/foundation/win32/file_handle.h"
#include "host/win32/deep_folder.h"

namespace Tests {
namespace {

using namespace Embedded;
namespace fs = std::filesystem;

class ReplacedFile : public AtomicFile {
protected:
    static FileHandle openedWithoutSharing(const fs::path& path)
    {
        FileHandle handle(CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        EXPECT_TRUE(handle.isOpen());
        return handle;
    }
    static void recover(const fs::path& path)
    {
        const auto failure = recoverReplacedFile(path);
        EXPECT_FALSE(failure) << failure->message;
    }

    fs::path aside = folder.path() / "a.qedb.before-save";
};

TEST_F(ReplacedFile, ThatASaveLeftAside_GetsItsNameBack)
{
    put(aside, "old");
    recover(file);
    EXPECT_EQ(contentsOf(file), "old");
    EXPECT_EQ(namesIn(folder.path()), Names{"a.qedb"});
}

TEST_F(ReplacedFile, ThatASaveLeftAside_IsReplacedByTheNext)
{
    put(aside, "old");
    write(file, "new");
    EXPECT_EQ(contentsOf(file), "new");
    EXPECT_EQ(namesIn(folder.path()), Names{"a.qedb"});
}

TEST_F(ReplacedFile, ThatIsInItsPlace_IsNotTouchedByOneLeftAside)
{
    put(file, "new");
    put(aside, "old");
    recover(file);
    EXPECT_EQ(contentsOf(file), "new");
    EXPECT_EQ(contentsOf(aside), "old");
}

TEST_F(ReplacedFile, ThatStayedAsideOfAnIntactOne_GoesAwayWithTheNextSave)
{
    put(file, "new");
    put(aside, "old");
    write(file, "newest");
    EXPECT_EQ(contentsOf(file), "newest");
    EXPECT_EQ(namesIn(folder.path()), Names{"a.qedb"});
}

TEST_F(ReplacedFile, WhereNothingIsAside_NeedsNoRecovery)
{
    recover(file);
    recover(folder.path() / "missing" / "a.qedb");
    EXPECT_EQ(namesIn(folder.path()), Names{});
}

TEST_F(ReplacedFile, ThatCannotGetItsNameBack_StaysAsideAndIsNamed)
{
    put(aside, "old");
    {
        const FileHandle held = openedWithoutSharing(aside);
        const auto failure = recoverReplacedFile(file);
        ASSERT_TRUE(failure);
        EXPECT_EQ(failure->message, file.string() + ": is still in " + aside.string() +
                                        ", where an interrupted save left it: in use by another program");
        expectRefusal(file, "in use by another program");
    }
    EXPECT_EQ(contentsOf(aside), "old");
    EXPECT_EQ(namesIn(folder.path()), Names{"a.qedb.before-save"});
}

TEST_F(ReplacedFile, ThatAnotherProgramHasToItself_StaysWhole)
{
    put(file, "old");
    {
        const FileHandle held = openedWithoutSharing(file);
        expectRefusal(file, "in use by another program");
    }
    EXPECT_EQ(contentsOf(file), "old");
    EXPECT_EQ(namesIn(folder.path()), Names{"a.qedb"});
}

TEST_F(ReplacedFile, ThatIsWriteProtected_StaysWholeAndProtected)
{
    put(file, "old");
    ASSERT_TRUE(SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_READONLY));
    expectRefusal(file, "Permission denied");
    EXPECT_NE(GetFileAttributesW(file.c_str()) & FILE_ATTRIBUTE_READONLY, 0U);
    ASSERT_TRUE(SetFileAttributesW(file.c_str(), FILE_ATTRIBUTE_NORMAL));
    EXPECT_EQ(contentsOf(file), "old");
    EXPECT_EQ(namesIn(folder.path()), Names{"a.qedb"});
}

TEST_F(ReplacedFile, WithAFolderWhereItWouldBePutAside_StaysWhole)
{
    put(file, "old");
    fs::create_directory(aside);
    EXPECT_EQ(writeFileAtomically(file, "new").status, Qeapp::eFileWriteFailed);
    EXPECT_EQ(contentsOf(file), "old");
    EXPECT_EQ(namesIn(folder.path()), (Names{"a.qedb", "a.qedb.before-save"}));
}

TEST_F(ReplacedFile, BelowAFile_IsNowhere)
{
    put(file, "old");
    expectRefusal(file / "b.qedb", "No such file or directory");
    EXPECT_EQ(contentsOf(file), "old");
}

TEST_F(ReplacedFile, WithTheNameOfADevice_IsRefused)
{
    EXPECT_EQ(writeFileAtomically("NUL", "new").message, "NUL: cannot be written: Invalid argument");
}

TEST_F(ReplacedFile, WithANameThatNoFileHas_IsRefused)
{
    expectRefusal(folder.path() / "a?b.qedb", "no name that a file can have");
}

TEST_F(ReplacedFile, WithTheLongestName_IsPutAsideUnderAShorterOne)
{
    const fs::path longest = folder.path() / std::string(255, 'x');
    // The hash is FNV-1a, with 64 bits, of the name in capital letters.
    const fs::path shortened = folder.path() / (std::string(200, 'x') + "-27b86792c37ac79f.before-save");
    put(shortened, "old");
    recover(folder.path() / std::string(255, 'X'));
    EXPECT_EQ(contentsOf(longest), "old");
    write(longest, "new");
    EXPECT_EQ(contentsOf(longest), "new");
    EXPECT_EQ(namesIn(folder.path()).size(), 1U);
}

TEST_F(ReplacedFile, DeepBelowFolders_IsReplacedAndRecovered)
{
    const DeepFolder deep(folder.path(), 400);
    const fs::path name = deep.path() / "a.qedb";
    write(name, "first");
    write(name, "second");
    EXPECT_EQ(contentsOf(systemPath(name)), "second");
    ASSERT_TRUE(MoveFileW(systemPath(name).c_str(), systemPath(name).concat(".before-save").c_str()));
    recover(name);
    EXPECT_EQ(contentsOf(systemPath(name)), "second");
}

} // namespace
} // namespace Tests
