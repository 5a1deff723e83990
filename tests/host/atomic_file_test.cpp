// Files that are replaced whole or not at all.
#include "embedded/host/atomic_file.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <string>

#include "drawing_file_child_process.h"
#include "drawing_file_samples.h"
#include "drawing_file_temporary_folder.h"
#include "embedded/foundation/faults.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using namespace Embedded;
namespace fs = std::filesystem;

class AtomicFile : public PlatformTest {
protected:
    using Names = std::set<std::string>;

    static void write(const fs::path& target, const std::string& text)
    {
        const FileResult result = writeFileAtomically(target, text);
        EXPECT_EQ(result.message, "");
        EXPECT_EQ(result.status, Qeapp::eOk);
    }
    static void expectRefusal(const fs::path& target, const std::string& reason)
    {
        const FileResult result = writeFileAtomically(target, "new");
        EXPECT_EQ(result.status, Qeapp::eFileWriteFailed);
        EXPECT_EQ(result.message, target.string() + ": cannot be written: " + reason);
    }
    static unsigned permissionsOf(const fs::path& path)
    {
        struct stat found {};
        EXPECT_EQ(::stat(path.c_str(), &found), 0);
        return found.st_mode & 07777U;
    }

    TemporaryFolder folder;
    fs::path file = folder.path() / "a.qedb";
};

class ScopedUmask {
public:
    explicit ScopedUmask(mode_t mask) : before_(::umask(mask)) {}
    ~ScopedUmask() { ::umask(before_); }

private:
    mode_t before_;
};

TEST_F(AtomicFile, ANewFile_HoldsTheText)
{
    write(file, "text\n");
    EXPECT_EQ(contentsOf(file), "text\n");
    EXPECT_EQ(folder.names(), Names{"a.qedb"});
}

TEST_F(AtomicFile, AnExistingFile_IsReplaced)
{
    put(file, "a much longer text than the new one");
    write(file, "new");
    EXPECT_EQ(contentsOf(file), "new");
    EXPECT_EQ(folder.names(), Names{"a.qedb"});
}

TEST_F(AtomicFile, AnEmptyText_GivesAnEmptyFile)
{
    put(file, "old");
    write(file, "");
    EXPECT_EQ(contentsOf(file), "");
}

TEST_F(AtomicFile, BytesOfEveryKind_AreKept)
{
    std::string text;
    for (int count = 0; count < 100'000; ++count)
        text += static_cast<char>(count);
    write(file, text);
    EXPECT_EQ(contentsOf(file), text);
}

TEST_F(AtomicFile, ANewFile_HasThePermissionsThatTheUserWants)
{
    const ScopedUmask mask(027);
    write(file, "text");
    EXPECT_EQ(permissionsOf(file), 0640U);
}

TEST_F(AtomicFile, AReplacedFile_KeepsItsPermissions)
{
    for (const mode_t mode : {0600U, 0664U, 0777U}) {
        put(file, "old");
        ASSERT_EQ(::chmod(file.c_str(), mode), 0);
        write(file, "new");
        EXPECT_EQ(permissionsOf(file), mode);
    }
}

TEST_F(AtomicFile, ALink_StaysAndItsTargetIsReplaced)
{
    fs::create_directory(folder.path() / "elsewhere");
    put(folder.path() / "elsewhere/real", "old");
    fs::create_symlink("elsewhere/real", file);
    write(file, "new");
    EXPECT_EQ(fs::read_symlink(file), "elsewhere/real");
    EXPECT_EQ(contentsOf(folder.path() / "elsewhere/real"), "new");
    EXPECT_EQ(folder.names(), (Names{"a.qedb", "elsewhere"}));
}

TEST_F(AtomicFile, LinksToLinks_AreFollowedToTheirEnd)
{
    put(folder.path() / "real", "old");
    fs::create_symlink(folder.path() / "real", folder.path() / "absolute");
    fs::create_symlink("absolute", file);
    write(file, "new");
    EXPECT_TRUE(fs::is_symlink(file) && fs::is_symlink(folder.path() / "absolute"));
    EXPECT_EQ(contentsOf(folder.path() / "real"), "new");
}

TEST_F(AtomicFile, ALinkToNothing_GetsItsTarget)
{
    fs::create_symlink("real", file);
    write(file, "new");
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(contentsOf(folder.path() / "real"), "new");
}

TEST_F(AtomicFile, LinksInACircle_AreRefused)
{
    fs::create_symlink("b", file);
    fs::create_symlink("a.qedb", folder.path() / "b");
    expectRefusal(file, "Too many levels of symbolic links");
}

TEST_F(AtomicFile, AFolderThatDoesNotExist_IsRefused)
{
    expectRefusal(folder.path() / "missing/a.qedb", "No such file or directory");
}

TEST_F(AtomicFile, APlaceBelowAFile_IsRefused)
{
    put(file, "old");
    expectRefusal(file / "b.qedb", "Not a directory");
    EXPECT_EQ(contentsOf(file), "old");
}

TEST_F(AtomicFile, AFolderInThePlaceOfTheFile_IsRefused)
{
    expectRefusal(folder.path(), "Is a directory");
}

TEST_F(AtomicFile, APipeInThePlaceOfTheFile_StaysAPipe)
{
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    expectRefusal(file, "Invalid argument");
    EXPECT_TRUE(fs::is_fifo(file));
}

TEST_F(AtomicFile, TheLongestName_IsNotTooLongForTheTemporaryFile)
{
    const fs::path longest = folder.path() / std::string(255, 'x');
    write(longest, "text");
    EXPECT_EQ(contentsOf(longest), "text");
}

TEST_F(AtomicFile, AFileWithoutAFolder_IsInTheWorkingFolder)
{
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    write("a.qedb", "text");
    fs::current_path(before);
    EXPECT_EQ(contentsOf(file), "text");
}

TEST_F(AtomicFile, ANameThatIsNotUtf8_IsWrittenAndShownLegibly)
{
    write(folder.path() / "\xFF.qedb", "text");
    EXPECT_EQ(contentsOf(folder.path() / "\xFF.qedb"), "text");
    const FileResult result = writeFileAtomically(folder.path() / "\xFF/a", "text");
    EXPECT_EQ(result.message, folder.path().string() + "/\xEF\xBF\xBD/a: cannot be written: No such file or directory");
}

class AtomicFileStep : public AtomicFile, public testing::WithParamInterface<std::string> {
protected:
    void expectFailure(const std::string& reason)
    {
        const ScopedFault fault({.call = "writeFileAtomically." + GetParam(), .occurrence = 1, .code = {}});
        expectRefusal(file, reason);
        EXPECT_EQ(Faults::struck(), 1U);
    }
    std::string reason() const
    {
        return GetParam() == "open"    ? "Permission denied"
               : GetParam() == "write" ? "No space left on device"
                                       : "Input/output error";
    }
};

TEST_P(AtomicFileStep, ThatFails_LeavesTheOldFile)
{
    put(file, "old");
    expectFailure(reason());
    EXPECT_EQ(contentsOf(file), "old");
    EXPECT_EQ(folder.names(), Names{"a.qedb"});
}

TEST_P(AtomicFileStep, ThatFails_LeavesNothingWhereNothingWas)
{
    expectFailure(reason());
    EXPECT_EQ(folder.names(), Names{});
}

INSTANTIATE_TEST_SUITE_P(Each, AtomicFileStep, testing::Values("open", "write", "sync", "rename"),
                         [](const auto& step) { return step.param; });

TEST_F(AtomicFile, APlannedCode_IsTheResult)
{
    const ScopedFault fault({.call = "writeFileAtomically.sync", .code = Qeapp::eVetoed});
    EXPECT_EQ(writeFileAtomically(file, "new").status, Qeapp::eVetoed);
}

TEST_F(AtomicFile, ADiskThatIsFullHalfway_LeavesTheOldFile)
{
    put(file, "old");
    const std::string message = answerOfChild([this] {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{1'000, 1'000};
        if (::setrlimit(RLIMIT_FSIZE, &limit) != 0)
            return std::string("no limit");
        return writeFileAtomically(file, std::string(5'000, 'x')).message;
    });
    EXPECT_EQ(message, file.string() + ": cannot be written: File too large");
    EXPECT_EQ(contentsOf(file), "old");
    EXPECT_EQ(folder.names(), Names{"a.qedb"});
}

TEST_F(AtomicFile, AWriteProtectedFile_IsNotReplaced)
{
    put(file, "old");
    ASSERT_EQ(::chmod(file.c_str(), 0444), 0);
    ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);
    const std::string message = answerAsOrdinaryUser([this] { return writeFileAtomically(file, "new").message; });
    EXPECT_EQ(message, file.string() + ": cannot be written: Permission denied");
    EXPECT_EQ(contentsOf(file), "old");
}

TEST_F(AtomicFile, AWriteProtectedFolder_IsRefused)
{
    put(file, "old");
    ASSERT_EQ(::chmod(file.c_str(), 0666), 0);
    ASSERT_EQ(::chmod(folder.path().c_str(), 0555), 0);
    const std::string message = answerAsOrdinaryUser([this] { return writeFileAtomically(file, "new").message; });
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    EXPECT_EQ(message, file.string() + ": cannot be written: Permission denied");
    EXPECT_EQ(contentsOf(file), "old");
}

TEST_F(AtomicFile, AFolderThatMayNotBeListed_IsWrittenTo)
{
    ASSERT_EQ(::chmod(folder.path().c_str(), 0333), 0);
    const std::string message = answerAsOrdinaryUser([this] { return writeFileAtomically(file, "new").message; });
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    EXPECT_EQ(message, "");
    EXPECT_EQ(contentsOf(file), "new");
}

} // namespace
} // namespace Tests
