// Replaces files with permissions, links, pipes and names that are not UTF-8.
#include "base/staged_file_test.h"

#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include "support/posix/child_process.h"

namespace Tests {
namespace {

using namespace Embedded;
namespace fs = std::filesystem;

unsigned readPermissions(const fs::path& path)
{
    struct stat status {};
    EXPECT_EQ(::stat(path.c_str(), &status), 0);
    return status.st_mode & 07777U;
}

class ScopedUmask {
public:
    explicit ScopedUmask(mode_t mask) : before_(::umask(mask)) {}
    ~ScopedUmask() { ::umask(before_); }

private:
    mode_t before_;
};

TEST_F(StagedFileTest, NewFile_HasThePermissionsOfTheUmask)
{
    const ScopedUmask mask(027);
    write(file, "text");
    EXPECT_EQ(readPermissions(file), 0640U);
}

TEST_F(StagedFileTest, ReplacedFile_KeepsItsPermissions)
{
    for (const mode_t mode : {0600U, 0664U, 0777U}) {
        writeFile(file, "old");
        ASSERT_EQ(::chmod(file.c_str(), mode), 0);
        write(file, "new");
        EXPECT_EQ(readPermissions(file), mode);
    }
}

TEST_F(StagedFileTest, Link_StaysAndItsTargetIsReplaced)
{
    fs::create_directory(folder.path() / "elsewhere");
    writeFile(folder.path() / "elsewhere/real", "old");
    fs::create_symlink("elsewhere/real", file);
    write(file, "new");
    EXPECT_EQ(fs::read_symlink(file), "elsewhere/real");
    EXPECT_EQ(readFile(folder.path() / "elsewhere/real"), "new");
    EXPECT_EQ(folder.names(), (Names{"a.txt", "elsewhere"}));
}

TEST_F(StagedFileTest, LinkToALink_IsFollowedToTheLastTarget)
{
    writeFile(folder.path() / "real", "old");
    fs::create_symlink(folder.path() / "real", folder.path() / "absolute");
    fs::create_symlink("absolute", file);
    write(file, "new");
    EXPECT_TRUE(fs::is_symlink(file) && fs::is_symlink(folder.path() / "absolute"));
    EXPECT_EQ(readFile(folder.path() / "real"), "new");
}

TEST_F(StagedFileTest, DanglingLink_GetsItsTarget)
{
    fs::create_symlink("real", file);
    write(file, "new");
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(readFile(folder.path() / "real"), "new");
}

TEST_F(StagedFileTest, CircularLink_IsRefused)
{
    fs::create_symlink("b", file);
    fs::create_symlink("a.txt", folder.path() / "b");
    expectRefusal(file, "Too many levels of symbolic links");
}

TEST_F(StagedFileTest, PathBelowAFile_IsRefused)
{
    writeFile(file, "old");
    expectRefusal(file / "b.txt", "Not a directory");
    EXPECT_EQ(readFile(file), "old");
}

TEST_F(StagedFileTest, PipeAsTarget_IsRefused)
{
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    expectRefusal(file, "Invalid argument");
    EXPECT_TRUE(fs::is_fifo(file));
}

TEST_F(StagedFileTest, NameThatIsNotUtf8_IsWritten)
{
    write(folder.path() / "\xFF.txt", "text");
    EXPECT_EQ(readFile(folder.path() / "\xFF.txt"), "text");
    expectRefusal(folder.path() / "\xFF/a", "No such file or directory");
}

TEST_F(StagedFileTest, DiskThatFillsUpDuringTheSave_LeavesTheOldFile)
{
    writeFile(file, "old");
    const std::string message = runInChildProcess([this] {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{1'000, 1'000};
        if (::setrlimit(RLIMIT_FSIZE, &limit) != 0)
            return std::string("no limit");
        return replace(file, std::string(5'000, 'x'));
    });
    EXPECT_EQ(message, "cannot be written: File too large");
    EXPECT_EQ(readFile(file), "old");
    EXPECT_EQ(folder.names(), Names{"a.txt"});
}

TEST_F(StagedFileTest, WriteProtectedFile_IsNotReplaced)
{
    writeFile(file, "old");
    ASSERT_EQ(::chmod(file.c_str(), 0444), 0);
    ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);
    const std::string message = runAsOrdinaryUser([this] { return replace(file, "new"); });
    EXPECT_EQ(message, "cannot be written: Permission denied");
    EXPECT_EQ(readFile(file), "old");
}

TEST_F(StagedFileTest, WriteProtectedFolder_IsRefused)
{
    writeFile(file, "old");
    ASSERT_EQ(::chmod(file.c_str(), 0666), 0);
    ASSERT_EQ(::chmod(folder.path().c_str(), 0555), 0);
    const std::string message = runAsOrdinaryUser([this] { return replace(file, "new"); });
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    EXPECT_EQ(message, "cannot be written: Permission denied");
    EXPECT_EQ(readFile(file), "old");
}

TEST_F(StagedFileTest, FolderThatCannotBeListed_IsWrittenTo)
{
    ASSERT_EQ(::chmod(folder.path().c_str(), 0333), 0);
    const std::string message = runAsOrdinaryUser([this] { return replace(file, "new"); });
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    EXPECT_EQ(message, "");
    EXPECT_EQ(readFile(file), "new");
}

} // namespace
} // namespace Tests
