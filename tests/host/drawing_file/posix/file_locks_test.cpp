// Processes that use one file in turn, and what releases the locks of a process.
#include <fcntl.h>
#include <unistd.h>

#include "embedded/base/file_kind.h"
#include "host/drawing_file/drawing_file_test.h"
#include "host/drawing_file/posix/other_process.h"

namespace Tests {
namespace {

class FileLocks : public DrawingFileTest {
protected:
    FileLocks() { writeDrawing(GivenDrawing().withXrecord({{300, L"old"}}, L"key")); }

    // The commands of the other process. Each returns the outcome of opening or saving the drawing.
    static constexpr char kOpenForChanging = 'c';
    static constexpr char kOpenForReading = 'r';
    static constexpr char kOpenForSharing = 's';
    static constexpr char kSaveAChange = 'n';
    static constexpr char kKeepOpenForChanging = 'k';

    std::string execute(char command) const
    {
        switch (command) {
        case kSaveAChange: {
            Drawing drawing(loadFile(DrawingAccess::changing));
            drawing.withXrecord({{300, L"new"}}, L"key");
            return outcome(save(*drawing.database()));
        }
        case kKeepOpenForChanging:
            return outcome(load(file, keptOpen, DrawingAccess::changing));
        case kOpenForReading:
            return tryToLoad(file, DrawingAccess::reading);
        case kOpenForSharing:
            return tryToLoad(file, DrawingAccess::sharing);
        default:
            return tryToLoad(file, DrawingAccess::changing);
        }
    }

    mutable Database keptOpen; // in the other process, until it ends
    OtherProcess other{[this](char command) { return execute(command); }};
};

TEST_F(FileLocks, DrawingOpenForChanging_CannotBeChangedByAnotherProcess)
{
    Database changing = loadFile(DrawingAccess::changing);
    EXPECT_EQ(other.run(kOpenForChanging), lockedRefusal());
    EXPECT_EQ(other.run(kOpenForReading), "0");
    EXPECT_EQ(other.run(kOpenForSharing), "0");
    changing.reset();
    EXPECT_EQ(other.run(kOpenForChanging), "0");
}

TEST_F(FileLocks, EndOfAProcess_ReleasesItsLock)
{
    {
        const OtherProcess ending([this](char command) { return execute(command); });
        EXPECT_EQ(ending.run(kKeepOpenForChanging), "0");
        EXPECT_EQ(other.run(kOpenForChanging), lockedRefusal());
    }
    EXPECT_EQ(other.run(kOpenForChanging), "0");
}

TEST_F(FileLocks, ChangeByAnotherProcess_IsDetected)
{
    const Database sharing = loadFile(DrawingAccess::sharing);
    EXPECT_EQ(other.run(kSaveAChange), "0");
    EXPECT_EQ(outcome(save(*sharing)), changedRefusal());
    EXPECT_EQ(Drawing(loadFile()).xrecord(L"key"), (Items{{300, L"new"}}));
}

TEST_F(FileLocks, FileReplacedWhileItIsOpen_IsNotSavedTo)
{
    Drawing drawing(loadFile(DrawingAccess::sharing));
    drawing.withXrecord({{300, L"mine"}}, L"key");
    const std::string bytes = readFile(file);
    std::filesystem::rename(file, folder.path() / "moved.qedb");
    writeFile(file, bytes);
    EXPECT_EQ(outcome(save(*drawing.database())),
              refusal(Qeapp::eFileChanged, "was moved, removed or replaced since it was opened; open it again"));
    EXPECT_TRUE(readFile(file) == bytes);
    EXPECT_TRUE(readFile(folder.path() / "moved.qedb") == bytes);
}

/// This is why only SQLite may open the file of an open drawing.
TEST_F(FileLocks, ClosingAnotherDescriptorOfTheFile_ReleasesTheLocks)
{
    const Database changing = loadFile(DrawingAccess::changing);
    const int descriptor = ::open(file.c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_GE(descriptor, 0);
    EXPECT_EQ(other.run(kOpenForChanging), lockedRefusal());
    ASSERT_EQ(::close(descriptor), 0);
    EXPECT_EQ(other.run(kOpenForChanging), "0")
        << "on this system a descriptor no longer releases the locks of the others";
}

TEST_F(FileLocks, EveryOperationOfTheHost_KeepsTheLocks)
{
    const Database changing = loadFile(DrawingAccess::changing);
    const auto expectKept = [&](const char* what) { EXPECT_EQ(other.run(kOpenForChanging), lockedRefusal()) << what; };

    fileContents();
    expectKept("reading it through a second connection");
    Database second;
    EXPECT_EQ(outcome(load(file, second, DrawingAccess::changing)), lockedRefusal());
    expectKept("a refused second connection");
    EXPECT_EQ(Embedded::fileKind(file), Embedded::FileKind::regular);
    expectKept("asking for its kind");
    saveToBytes(*changing);
    expectKept("copying it to memory");
    EXPECT_EQ(outcome(Embedded::saveDrawing(*changing, folder.path() / "b.qedb", QeDb::kCurrentDwg)), "0");
    expectKept("copying it to a file");
    for (const auto overwriting :
         {Embedded::Overwriting::refused, Embedded::Overwriting::drawings, Embedded::Overwriting::noDatabase}) {
        const Drawing another;
        EXPECT_FALSE(Embedded::saveDrawing(*another.database(), file, QeDb::kCurrentDwg, overwriting, lockWait(0)));
        expectKept("a refused save of another drawing over it");
    }
    std::filesystem::create_symlink("a.qedb", folder.path() / "link.qedb");
    EXPECT_EQ(outcome(load(folder.path() / "link.qedb", second)), "0");
    second.reset();
    expectKept("reading it through a link");
}

} // namespace
} // namespace Tests
