// The next save in a folder removes the files of a killed save, and nothing else.
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
    void put(const std::string& name) const { std::ofstream(folder.path() / name) << "left behind"; }
    void save() const { EXPECT_TRUE(Embedded::replaceFile(folder.path() / "a.txt", "new")); }
    bool isThere(const std::string& name) const { return fs::exists(fs::symlink_status(folder.path() / name)); }

    TemporaryFolder folder;
    std::string abandoned = ".saving-1-0.tmp"; // the number of a process that runs, which does not matter
};

TEST_F(AbandonedSave, IsRemovedByTheNextSave)
{
    put(abandoned);
    put(".saving-4294967295-4294967295.tmp");
    save();
    EXPECT_EQ(contentsBelow(folder.path()), (FolderContents{{"a.txt", "new"}}));
}

TEST_F(AbandonedSave, OfAProcessOfTheSameNumber_IsNotInTheWay)
{
    for (int count = 0; count < 150; ++count)
        put(".saving-" + std::to_string(::getpid()) + "-" + std::to_string(count) + ".tmp");
    save();
    EXPECT_EQ(contentsBelow(folder.path()), (FolderContents{{"a.txt", "new"}}));
}

TEST_F(AbandonedSave, OfAnotherName_Stays)
{
    const std::string names[] = {".saving-1.tmp",     ".saving-1-.tmp", ".saving--0.tmp",  ".saving-1-0.tmp~",
                                 "saving-1-0.tmp",    ".saving-1-0",    ".saving-a-0.tmp", ".saving-1-0x.tmp",
                                 ".saving-1-0-2.tmp", ".saving.tmp",    ".saving-.tmp",    ".Saving-1-0.tmp"};
    for (const std::string& name : names)
        put(name);
    save();
    for (const std::string& name : names)
        EXPECT_TRUE(isThere(name)) << name;
}

TEST_F(AbandonedSave, ThatIsNoRegularFile_Stays)
{
    fs::create_directory(folder.path() / abandoned);
    ASSERT_EQ(::mkfifo((folder.path() / ".saving-1-1.tmp").c_str(), 0600), 0);
    put("real");
    fs::create_symlink("real", folder.path() / ".saving-1-2.tmp");
    save();
    for (const std::string& name : {abandoned, std::string(".saving-1-1.tmp"), std::string(".saving-1-2.tmp")})
        EXPECT_TRUE(isThere(name)) << name;
    EXPECT_TRUE(isThere("real"));
}

TEST_F(AbandonedSave, ThatAnotherProcessStillWrites_Stays)
{
    put(abandoned);
    const Embedded::FileDescriptor writer(::open((folder.path() / abandoned).c_str(), O_WRONLY));
    ASSERT_EQ(::flock(writer.get(), LOCK_EX | LOCK_NB), 0);
    save();
    EXPECT_TRUE(isThere(abandoned));
}

TEST_F(AbandonedSave, OfAnotherUser_Stays)
{
    ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);
    put(abandoned);
    ASSERT_EQ(::chmod((folder.path() / abandoned).c_str(), 0666), 0);
    const bool isRoot = ::geteuid() == 0;
    EXPECT_EQ(runAsOrdinaryUser(
                  [this] { return Embedded::replaceFile(folder.path() / "a.txt", "new") ? "saved" : "failed"; }),
              "saved");
    EXPECT_EQ(isThere(abandoned), isRoot); // an ordinary user is the same user still
}

/// What looks like it gets its final name, and another one is begun under the same name, while it is being looked at.
TEST_F(AbandonedSave, ThatTurnsOutToBeAnotherOne_Stays)
{
    for (std::size_t call = 0; call < 6; ++call) {
        put(abandoned);
        std::optional<Embedded::FileDescriptor> writer;
        const WatchedFolder watched(folder.path(),
                                    {Interruption::Effect::meanwhile, call, 0, [&] {
                                         fs::rename(folder.path() / abandoned, folder.path() / "b.txt");
                                         put(abandoned);
                                         writer.emplace(::open((folder.path() / abandoned).c_str(), O_WRONLY));
                                         ASSERT_EQ(::flock(writer->get(), LOCK_EX | LOCK_NB), 0);
                                     }});
        save();
        ASSERT_TRUE(writer.has_value());
        if (watched.calls().at(call).kind != DiskCall::Kind::remove) { // no system can ask and remove at once
            EXPECT_TRUE(isThere(abandoned)) << call;
        }
        fs::remove(folder.path() / abandoned);
    }
}

/// A second save runs at each call of the first one, which is held up there.
TEST_F(AbandonedSave, IsNeverTheSaveOfAnotherProcessThatGoesOn)
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
