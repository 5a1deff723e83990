// Opening drawings that an interrupted save left aside, and what only this system has in the place of drawing files.
#include "host/drawing_file_load_test.h"

#include <windows.h>

#include "embedded/foundation/win32/file_handle.h"
#include "host/win32/deep_folder.h"

namespace Tests {
namespace {

using namespace Embedded;
namespace fs = std::filesystem;

class InterruptedSave : public DrawingFileLoad {
protected:
    static FileHandle openedWithoutSharing(const fs::path& path)
    {
        return FileHandle(CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    }
    static void expectTheExample(const fs::path& path)
    {
        std::unique_ptr<QeDbDatabase> database;
        const FileResult result = loadDrawing(path, database);
        ASSERT_EQ(result.status, Qeapp::eOk) << result.message;
        EXPECT_EQ(imageOf(*database), exampleImage());
    }

    fs::path aside = folder.path() / "a.qedb.before-save";
};

TEST_F(InterruptedSave, BetweenItsSteps_LeavesADrawingThatIsLoaded)
{
    put(aside, exampleText());
    put(folder.path() / ".saving-4711-0.tmp", "half of a draw");
    expectTheExample(file);
    EXPECT_EQ(contentsOf(file), exampleText());
    EXPECT_EQ(namesIn(folder.path()), (std::set<std::string>{".saving-4711-0.tmp", "a.qedb"}));
}

TEST_F(InterruptedSave, AfterItsSteps_ChangesNothingForTheLoad)
{
    put(file, exampleText());
    put(aside, "the drawing before");
    expectTheExample(file);
    EXPECT_EQ(contentsOf(file), exampleText());
    EXPECT_EQ(contentsOf(aside), "the drawing before");
}

TEST_F(InterruptedSave, WithADrawingThatCannotComeBack_TellsWhereItIs)
{
    put(aside, exampleText());
    const FileHandle held = openedWithoutSharing(aside);
    expectRefusal(file, Qeapp::eFileNotFound,
                  "is still in " + aside.string() + ", where an interrupted save left it: in use by another program");
}

using DrawingFileOfWindows = InterruptedSave;

TEST_F(DrawingFileOfWindows, BelowAFile_IsNotFound)
{
    put(file, "text");
    expectRefusal(file / "b.qedb", Qeapp::eFileNotFound, "No such file or directory");
}

TEST_F(DrawingFileOfWindows, ADevice_IsNoDrawingAndIsNotOpened)
{
    expectRefusal("NUL", Qeapp::eFileDamaged, "is not a regular file");
    expectRefusal(R"(\\.\pipe\no-drawing)", Qeapp::eFileDamaged, "is not a regular file");
}

TEST_F(DrawingFileOfWindows, ThatAnotherProgramHasToItself_CannotBeOpened)
{
    put(file, exampleText());
    const FileHandle held = openedWithoutSharing(file);
    expectRefusal(file, Qeapp::eFileNotFound, "Permission denied");
}

TEST_F(DrawingFileOfWindows, DeepBelowFolders_IsSavedAndLoaded)
{
    const DeepFolder deep(folder.path(), 400);
    const std::unique_ptr<QeDbDatabase> database = databaseFrom(exampleImage());
    const FileResult saved = saveDrawing(*database, deep.path() / "a.qedb", database->drawingVersion());
    ASSERT_EQ(saved.status, Qeapp::eOk) << saved.message;
    expectTheExample(deep.path() / "a.qedb");
}

} // namespace
} // namespace Tests
