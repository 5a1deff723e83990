// Processes that take turns with one file, and what ends the locks of a process.
#include <fcntl.h>
#include <unistd.h>

#include "embedded/base/file_kind.h"
#include "host/drawing_file/drawing_file_test.h"
#include "host/drawing_file/posix/other_process.h"

namespace Tests {
namespace {

class FileLocks : public DrawingFileTest {
protected:
    FileLocks() { given(GivenDrawing().withXrecord({{300, L"old"}}, L"key")); }

    /// What another process comes to that opens the file for changing.
    std::string inAnotherProcess(char question = 'c') const { return other.ask(question); }
    std::string locked() const
    {
        return refusal(Qeapp::eFileLocked, "another process is using it and did not release it in time");
    }
    std::string answer(char question) const
    {
        using enum DrawingAccess;
        if (question == 'n') {
            Drawing drawing(loaded(changing));
            drawing.withXrecord({{300, L"new"}}, L"key");
            return outcome(save(*drawing.database()));
        }
        Database database;
        const std::string found = outcome(load(file, database,
                                               question == 'c'   ? changing
                                               : question == 'r' ? reading
                                                                 : sharing));
        if (question == 'k')
            static_cast<void>(load(file, kept_, changing)); // until the process ends
        return found;
    }

    OtherProcess other{[this](char question) { return answer(question); }};

private:
    mutable Database kept_; // by the other process
};

TEST_F(FileLocks, AnotherProcess_DoesNotChangeWhatThisOneChanges)
{
    Database changing = loaded(DrawingAccess::changing);
    EXPECT_EQ(inAnotherProcess(), locked());
    EXPECT_EQ(inAnotherProcess('r'), "0");
    EXPECT_EQ(inAnotherProcess('s'), "0");
    changing.reset();
    EXPECT_EQ(inAnotherProcess(), "0");
}

TEST_F(FileLocks, AProcessThatEnds_HoldsNoLock)
{
    {
        const OtherProcess ending([this](char question) { return answer(question); });
        EXPECT_EQ(ending.ask('k'), "0");
        EXPECT_EQ(inAnotherProcess(), locked());
    }
    EXPECT_EQ(inAnotherProcess(), "0");
}

TEST_F(FileLocks, AChangeOfAnotherProcess_IsSeen)
{
    const Database sharing = loaded(DrawingAccess::sharing);
    EXPECT_EQ(inAnotherProcess('n'), "0");
    EXPECT_EQ(outcome(save(*sharing)),
              refusal(Qeapp::eFileChanged, "was changed by another program since it was opened; open it again"));
    EXPECT_EQ(Drawing(loaded()).xrecord(L"key"), (Items{{300, L"new"}}));
}

TEST_F(FileLocks, AFileThatIsReplacedWhileItIsOpen_IsNotSavedInto)
{
    Drawing drawing(loaded(DrawingAccess::sharing));
    drawing.withXrecord({{300, L"mine"}}, L"key");
    const std::string bytes = readFile(file);
    std::filesystem::rename(file, folder.path() / "moved.qedb");
    writeFile(file, bytes);
    EXPECT_EQ(outcome(save(*drawing.database())),
              refusal(Qeapp::eFileChanged, "was moved, removed or replaced since it was opened; open it again"));
    EXPECT_TRUE(readFile(file) == bytes);
    EXPECT_TRUE(readFile(folder.path() / "moved.qedb") == bytes);
}

/// Why nothing but SQLite may open the file of a drawing that is open.
TEST_F(FileLocks, ClosingAnyOtherDescriptorOfTheFile_WouldEndThem)
{
    const Database changing = loaded(DrawingAccess::changing);
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_GE(descriptor, 0);
    EXPECT_EQ(inAnotherProcess(), locked());
    ASSERT_EQ(::close(descriptor), 0);
    EXPECT_EQ(inAnotherProcess(), "0") << "this system keeps the locks of a process for itself now";
}

TEST_F(FileLocks, WhateverTheHostDoesWithTheFile_KeepsThem)
{
    const Database changing = loaded(DrawingAccess::changing);
    const auto expectKept = [&](const char* what) { EXPECT_EQ(inAnotherProcess(), locked()) << what; };

    inFile();
    expectKept("reading all of it by a second opening");
    Database second;
    EXPECT_EQ(outcome(load(file, second, DrawingAccess::changing)), locked());
    expectKept("a refused second opening");
    EXPECT_EQ(Embedded::fileKind(file), Embedded::FileKind::regular);
    expectKept("looking at it");
    saveToBytes(*changing);
    expectKept("copying it to memory");
    EXPECT_EQ(outcome(Embedded::saveDrawing(*changing, folder.path() / "b.qedb", QeDb::kCurrentDwg)), "0");
    expectKept("copying it to a file");
    for (const auto overwriting :
         {Embedded::Overwriting::refused, Embedded::Overwriting::drawings, Embedded::Overwriting::noDatabase}) {
        const Drawing another;
        EXPECT_FALSE(Embedded::saveDrawing(*another.database(), file, QeDb::kCurrentDwg, overwriting, waitOf(0)));
        expectKept("another drawing that was to be saved over it");
    }
    std::filesystem::create_symlink("a.qedb", folder.path() / "link.qedb");
    EXPECT_EQ(outcome(load(folder.path() / "link.qedb", second)), "0");
    second.reset();
    expectKept("reading it through a link");
}

} // namespace
} // namespace Tests
