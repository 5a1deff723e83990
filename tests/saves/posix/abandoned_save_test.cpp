// A save removes the temporary files of killed saves from its folder, and no other files.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <optional>

#include "embedded/base/posix/file_descriptor.h"
#include "embedded/base/staged_file.h"
#include "saves/posix/disk_calls.h"
#include "saves/posix/simulated_disk.h"
#include "support/platform_test.h"
#include "support/posix/child_process.h"
#include "support/temporary_folder.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

class AbandonedSave : public PlatformTest {
protected:
    void createFile(const std::string& name) const { std::ofstream(folder.path() / name) << "abandoned"; }
    void save() const { EXPECT_TRUE(Embedded::replaceFile(folder.path() / "a.txt", "new")); }
    bool exists(const std::string& name) const { return fs::exists(fs::symlink_status(folder.path() / name)); }

    TemporaryFolder folder;
    std::string abandoned = ".saving-1-0.tmp"; // process 1 is running, which does not matter
};

TEST_F(AbandonedSave, AbandonedFile_IsRemovedByTheNextSave)
{
    createFile(abandoned);
    createFile(".saving-4294967295-4294967295.tmp");
    save();
    EXPECT_EQ(contentsBelow(folder.path()), (FolderContents{{"a.txt", "new"}}));
}

TEST_F(AbandonedSave, AbandonedFilesWithTheNumberOfThisProcess_DoNotPreventASave)
{
    for (int count = 0; count < 150; ++count)
        createFile(".saving-" + std::to_string(::getpid()) + "-" + std::to_string(count) + ".tmp");
    save();
    EXPECT_EQ(contentsBelow(folder.path()), (FolderContents{{"a.txt", "new"}}));
}

TEST_F(AbandonedSave, FileWithAnotherName_IsNotRemoved)
{
    const std::string names[] = {".saving-1.tmp",     ".saving-1-.tmp", ".saving--0.tmp",  ".saving-1-0.tmp~",
                                 "saving-1-0.tmp",    ".saving-1-0",    ".saving-a-0.tmp", ".saving-1-0x.tmp",
                                 ".saving-1-0-2.tmp", ".saving.tmp",    ".saving-.tmp",    ".Saving-1-0.tmp"};
    for (const std::string& name : names)
        createFile(name);
    save();
    for (const std::string& name : names)
        EXPECT_TRUE(exists(name)) << name;
}

TEST_F(AbandonedSave, EntryThatIsNotARegularFile_IsNotRemoved)
{
    fs::create_directory(folder.path() / abandoned);
    ASSERT_EQ(::mkfifo((folder.path() / ".saving-1-1.tmp").c_str(), 0600), 0);
    createFile("real");
    fs::create_symlink("real", folder.path() / ".saving-1-2.tmp");
    save();
    for (const std::string& name : {abandoned, std::string(".saving-1-1.tmp"), std::string(".saving-1-2.tmp")})
        EXPECT_TRUE(exists(name)) << name;
    EXPECT_TRUE(exists("real"));
}

TEST_F(AbandonedSave, FileThatAnotherProcessWrites_IsNotRemoved)
{
    createFile(abandoned);
    const Embedded::FileDescriptor writer(::open((folder.path() / abandoned).c_str(), O_WRONLY));
    ASSERT_EQ(::flock(writer.get(), LOCK_EX | LOCK_NB), 0);
    save();
    EXPECT_TRUE(exists(abandoned));
}

TEST_F(AbandonedSave, FileOfAnotherUser_IsNotRemoved)
{
    ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);
    createFile(abandoned);
    ASSERT_EQ(::chmod((folder.path() / abandoned).c_str(), 0666), 0);
    const bool isRoot = ::geteuid() == 0;
    EXPECT_EQ(runAsOrdinaryUser(
                  [this] { return Embedded::replaceFile(folder.path() / "a.txt", "new") ? "saved" : "failed"; }),
              "saved");
    EXPECT_EQ(exists(abandoned), isRoot); // otherwise it is the same user
}

/// While a save examines a file, that file gets its final name, and another save begins a file with the old name.
TEST_F(AbandonedSave, FileReplacedDuringTheRemoval_IsNotRemoved)
{
    for (std::size_t call = 0; call < 6; ++call) {
        createFile(abandoned);
        std::optional<Embedded::FileDescriptor> writer;
        const WatchedFolder watched(folder.path(),
                                    {Interruption::Effect::meanwhile, call, 0, [&] {
                                         fs::rename(folder.path() / abandoned, folder.path() / "b.txt");
                                         createFile(abandoned);
                                         writer.emplace(::open((folder.path() / abandoned).c_str(), O_WRONLY));
                                         ASSERT_EQ(::flock(writer->get(), LOCK_EX | LOCK_NB), 0);
                                     }});
        save();
        ASSERT_TRUE(writer.has_value());
        // No system can check and remove a file in one call.
        if (watched.calls().at(call).kind != DiskCall::Kind::remove) {
            EXPECT_TRUE(exists(abandoned)) << call;
        }
        fs::remove(folder.path() / abandoned);
    }
}

/// A second save runs in another process before each call of the first one.
TEST_F(AbandonedSave, FileOfAConcurrentSave_IsNotRemoved)
{
    std::size_t calls = 0;
    {
        const WatchedFolder watched(folder.path());
        save();
        calls = watched.calls().size();
    }
    ASSERT_GT(calls, 8U);
    for (std::size_t call = 0; call < calls; ++call) {
        const WatchedFolder watched(
            folder.path(), {Interruption::Effect::meanwhile, call, 0, [this] {
                                EXPECT_EQ(runInChildProcess([this] {
                                              return Embedded::replaceFile(folder.path() / "b.txt", "other") ? "saved"
                                                                                                             : "failed";
                                          }),
                                          "saved");
                            }});
        save();
    }
    EXPECT_EQ(contentsBelow(folder.path()), (FolderContents{{"a.txt", "new"}, {"b.txt", "other"}}));
}

} // namespace
} // namespace Tests
