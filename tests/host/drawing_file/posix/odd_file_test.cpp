// Drawing files with unusual permissions, links, pipes and names.
#include <sys/stat.h>

#include "host/drawing_file/drawing_file_test.h"
#include "support/posix/child_process.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

class OddFile : public DrawingFileTest {
protected:
    OddFile()
    {
        writeDrawing(GivenDrawing().withXrecord({{300, L"old"}}, L"key"));
        EXPECT_EQ(::chmod(folder.path().c_str(), 0777), 0);
        EXPECT_EQ(::chmod(file.c_str(), 0666), 0);
    }
    /// Opens the drawing for changing, changes it and saves it.
    std::string change(const fs::path& path) const
    {
        Database database;
        if (const Expected<void> result = load(path, database, DrawingAccess::changing); database == nullptr)
            return outcome(result);
        Drawing drawing(std::move(database));
        drawing.withXrecord({{300, L"new"}}, L"key");
        return outcome(Embedded::saveDrawing(*drawing.database(), path, QeDb::kCurrentDwg));
    }
    /// Changes every value and ends before the commit, so that the journal stays.
    void leaveAJournal() const
    {
        runInChildProcess([this] {
            DrawingSql sql(file);
            sql.run("PRAGMA cache_size = 1; BEGIN; UPDATE resbufs SET value = zeroblob(300000)");
            ::_exit(0); // without a rollback
            return std::string();
        });
    }
    std::string asOrdinaryUser(const std::function<std::string()>& work) const { return runAsOrdinaryUser(work); }
};

TEST_F(OddFile, PathBelowAFile_IsNotFound)
{
    EXPECT_EQ(tryToLoad(file / "b.qedb"), refusal(file / "b.qedb", Qeapp::eFileNotFound, "Not a directory"));
}

TEST_F(OddFile, DanglingLink_IsNotFound)
{
    fs::remove(file);
    fs::create_symlink("missing", file);
    EXPECT_EQ(tryToLoad(file), refusal(Qeapp::eFileNotFound, "No such file or directory"));
}

TEST_F(OddFile, CircularLink_IsNotFound)
{
    fs::remove(file);
    fs::create_symlink("a.qedb", file);
    EXPECT_EQ(tryToLoad(file), refusal(Qeapp::eFileNotFound, "Too many levels of symbolic links"));
}

TEST_F(OddFile, Pipe_IsRefusedWithoutWaiting)
{
    fs::remove(file);
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    EXPECT_EQ(tryToLoad(file), refusal(Qeapp::eFileDamaged, "is a pipe, not a regular file"));
    QeDbDatabase empty;
    EXPECT_EQ(outcome(Embedded::saveDrawing(empty, file, QeDb::kCurrentDwg, Embedded::Overwriting::drawings)),
              refusal(Qeapp::eFileWriteFailed, "is a pipe, not a regular file"));
}

TEST_F(OddFile, UnreadableFile_IsNotFound)
{
    ASSERT_EQ(::chmod(file.c_str(), 0), 0);
    EXPECT_EQ(asOrdinaryUser([this] { return tryToLoad(file); }),
              refusal(Qeapp::eFileNotFound, "cannot be opened: Permission denied"));
}

TEST_F(OddFile, WriteProtectedFile_IsReadButNotChanged)
{
    ASSERT_EQ(::chmod(file.c_str(), 0444), 0);
    EXPECT_EQ(asOrdinaryUser([this] { return fileContents(); }), fileContents());
    EXPECT_EQ(asOrdinaryUser([this] { return change(file); }), refusal(Qeapp::eFileWriteFailed, "is write-protected"));
    const auto save = [this] {
        Drawing drawing(loadFile());
        drawing.withXrecord({{300, L"new"}}, L"key");
        return outcome(this->save(*drawing.database()));
    };
    EXPECT_EQ(asOrdinaryUser(save), refusal(Qeapp::eFileWriteFailed, "is write-protected"));
}

TEST_F(OddFile, FileInAWriteProtectedFolder_IsReadButNotChanged)
{
    ASSERT_EQ(::chmod(folder.path().c_str(), 0555), 0);
    const std::string bytes = readFile(file);
    EXPECT_EQ(asOrdinaryUser([this] { return fileContents(); }), fileContents());
    EXPECT_EQ(asOrdinaryUser([this] { return change(file); }),
              refusal(Qeapp::eFileWriteFailed, "its folder is write-protected, and a save needs a journal there"));
    const auto other = folder.path() / "b.qedb";
    EXPECT_EQ(asOrdinaryUser([&] {
                  QeDbDatabase empty;
                  return outcome(Embedded::saveDrawing(empty, other, QeDb::kCurrentDwg));
              }),
              refusal(other, Qeapp::eFileWriteFailed, "cannot be written: Permission denied"));
    ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);
    EXPECT_TRUE(readFile(file) == bytes);
    EXPECT_EQ(folder.names(), std::set<std::string>{"a.qedb"});
}

TEST_F(OddFile, FileWithTwoHardLinks_IsReadButNotChanged)
{
    const fs::path second = folder.path() / "second.qedb";
    fs::create_hard_link(file, second);
    const std::string bytes = readFile(file);
    EXPECT_EQ(tryToLoad(second), "0");
    EXPECT_EQ(tryToLoad(second, DrawingAccess::reading), "0");
    const std::string reason =
        "has 2 names (hard links), and is not changed under any of them; copy it to a file of its own";
    EXPECT_EQ(change(file), refusal(Qeapp::eFileWriteFailed, reason));
    EXPECT_EQ(change(second), refusal(second, Qeapp::eFileWriteFailed, reason));
    Drawing drawing(loadFile());
    drawing.withXrecord({{300, L"new"}}, L"key");
    EXPECT_EQ(outcome(save(*drawing.database())), refusal(Qeapp::eFileWriteFailed, reason));
    EXPECT_TRUE(readFile(file) == bytes);
    fs::remove(second);
    EXPECT_EQ(change(file), "0");
}

TEST_F(OddFile, TargetOfALink_IsChangedWithItsJournalBesideIt)
{
    fs::create_directory(folder.path() / "elsewhere");
    const fs::path real = folder.path() / "elsewhere" / "real.qedb";
    fs::rename(file, real);
    fs::create_symlink("elsewhere/real.qedb", file);
    EXPECT_EQ(change(file), "0");
    EXPECT_TRUE(fs::is_symlink(file));
    EXPECT_EQ(Drawing(loadFile()).xrecord(L"key"), (Items{{300, L"new"}}));

    const std::string saved = readFile(real);
    leaveAJournal();
    EXPECT_TRUE(fs::exists(folder.path() / "elsewhere" / "real.qedb-journal"));
    EXPECT_FALSE(fs::exists(folder.path() / "a.qedb-journal"));
    EXPECT_EQ(Drawing(loadFile()).xrecord(L"key"), (Items{{300, L"new"}}));
    EXPECT_TRUE(readFile(real) == saved);
    EXPECT_FALSE(fs::exists(folder.path() / "elsewhere" / "real.qedb-journal"));
}

TEST_F(OddFile, JournalThatCannotBeRolledBack_IsReported)
{
    leaveAJournal();
    ASSERT_TRUE(fs::exists(folder.path() / "a.qedb-journal"));
    ASSERT_EQ(::chmod((folder.path() / "a.qedb-journal").c_str(), 0666), 0);
    const std::string unfinished = readFile(file);
    ASSERT_EQ(::chmod(file.c_str(), 0444), 0);
    ASSERT_EQ(::chmod(folder.path().c_str(), 0555), 0);
    const std::string reason =
        "an interrupted save has left a journal beside it, which cannot be rolled back because the "
        "file or its folder is write-protected";
    EXPECT_EQ(asOrdinaryUser([this] { return tryToLoad(file); }), refusal(Qeapp::eFileDamaged, reason));
    ASSERT_EQ(::chmod(file.c_str(), 0666), 0);
    EXPECT_EQ(
        asOrdinaryUser([this] { return tryToLoad(file); }),
        refusal(Qeapp::eFileWriteFailed, "the journal that a save has beside it cannot be removed: Permission denied"));
    ASSERT_EQ(::chmod(folder.path().c_str(), 0777), 0);
    EXPECT_EQ(asOrdinaryUser([this] { return tryToLoad(file); }), "0");
    EXPECT_TRUE(readFile(file) != unfinished);
    EXPECT_EQ(folder.names(), std::set<std::string>{"a.qedb"});
}

TEST_F(OddFile, NameThatIsNotUtf8_IsUsedAndShownWithReplacementCharacters)
{
    const fs::path odd = folder.path() / "\xFF.qedb";
    QeDbDatabase empty;
    ASSERT_EQ(outcome(Embedded::saveDrawing(empty, odd, QeDb::kCurrentDwg)), "0");
    EXPECT_EQ(tryToLoad(odd, DrawingAccess::changing), "0");
    EXPECT_EQ(outcome(Embedded::saveDrawing(empty, odd, QeDb::kCurrentDwg)),
              refusal(folder.path() / "\xEF\xBF\xBD.qedb", Qeapp::eFileExists, "the file exists already"));
}

TEST_F(OddFile, NameThatLooksLikeAnAddress_IsUsedAsAName)
{
    for (const char* name : {"file:b.qedb", "a?mode=memory", "%61.qedb", " .qedb", "a'b\".qedb", ":memory:"}) {
        const fs::path odd = folder.path() / name;
        QeDbDatabase empty;
        EXPECT_EQ(outcome(Embedded::saveDrawing(empty, odd, QeDb::kCurrentDwg)), "0") << name;
        EXPECT_TRUE(fs::exists(odd)) << name;
        EXPECT_EQ(tryToLoad(odd), "0") << name;
    }
}

TEST_F(OddFile, NameWithoutAFolder_IsInTheWorkingFolder)
{
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    for (const char* name : {"file:b.qedb", ":memory:", "c.qedb"}) {
        QeDbDatabase empty;
        EXPECT_EQ(outcome(Embedded::saveDrawing(empty, name, QeDb::kCurrentDwg)), "0") << name;
        EXPECT_TRUE(fs::exists(folder.path() / name)) << name;
        EXPECT_EQ(tryToLoad(name), "0") << name;
    }
    fs::current_path(before);
}

} // namespace
} // namespace Tests
