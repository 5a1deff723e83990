// Devices, files that another program has opened exclusively, and long names.
#include <windows.h>

#include "embedded/base/win32/file_handle.h"
#include "host/drawing_file/drawing_file_test.h"
#include "support/win32/deep_folder.h"

namespace Tests {
namespace {

class OddFile : public DrawingFileTest {
protected:
    OddFile() { writeDrawing(GivenDrawing().withXrecord({{300, L"old"}}, L"key")); }
};

TEST_F(OddFile, PathBelowAFile_IsNotFound)
{
    EXPECT_EQ(tryToLoad(file / "b.qedb"), refusal(file / "b.qedb", Qeapp::eFileNotFound, "No such file or directory"));
}

TEST_F(OddFile, DeviceAndPipe_AreRefused)
{
    const char* const pipe = R"(\\.\pipe\no-drawing)";
    EXPECT_EQ(tryToLoad("NUL"), refusal("NUL", Qeapp::eFileDamaged, "is a device, not a regular file"));
    EXPECT_EQ(tryToLoad(pipe), refusal(pipe, Qeapp::eFileDamaged, "is a pipe, not a regular file"));
}

TEST_F(OddFile, FileOpenedExclusivelyByAnotherProgram_CannotBeOpened)
{
    const Embedded::FileHandle held(CreateFileW(file.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(held.isOpen());
    EXPECT_NE(tryToLoad(file), "0");
}

TEST_F(OddFile, FileWithAVeryLongPath_IsSavedLoadedAndChanged)
{
    const DeepFolder deep(folder.path(), 400);
    const auto name = deep.path() / "a.qedb";
    QeDbDatabase empty;
    ASSERT_EQ(outcome(Embedded::saveDrawing(empty, name, QeDb::kCurrentDwg)), "0");
    Database database;
    ASSERT_EQ(outcome(load(name, database, DrawingAccess::changing)), "0");
    Drawing drawing(std::move(database));
    drawing.withXrecord({{300, L"new"}}, L"key");
    ASSERT_EQ(outcome(Embedded::saveDrawing(*drawing.database(), name, QeDb::kCurrentDwg)), "0");
    ASSERT_EQ(outcome(load(name, database)), "0");
    EXPECT_EQ(drawingContents(*database), drawing.contents());
}

} // namespace
} // namespace Tests
