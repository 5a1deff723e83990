// Opening drawing files.
#include <filesystem>
#include <memory>
#include <string>

#include "drawing_file_load_test.h"
#include "embedded/foundation/faults.h"

namespace Tests {
namespace {

using namespace Embedded;
namespace fs = std::filesystem;

TEST_F(DrawingFileLoad, TheExample_BecomesItsDrawing)
{
    put(file, exampleText());
    std::unique_ptr<QeDbDatabase> database;
    const FileResult result = loadDrawing(file, database);
    ASSERT_EQ(result.status, Qeapp::eOk) << result.message;
    EXPECT_EQ(database->drawingVersion(), 29);
    EXPECT_EQ(imageOf(*database), exampleImage());
}

TEST_F(DrawingFileLoad, AMissingFile_IsNotFound)
{
    expectRefusal(file, Qeapp::eFileNotFound, "No such file or directory");
}

TEST_F(DrawingFileLoad, AFolder_IsNoDrawing)
{
    expectRefusal(folder.path(), Qeapp::eFileDamaged, "is a folder");
}

TEST_F(DrawingFileLoad, AnEmptyFile_IsDamaged)
{
    expectRefusalOf("", Qeapp::eFileDamaged, "line 1, byte 1: the file is empty");
}

TEST_F(DrawingFileLoad, ATruncatedFile_IsDamagedAndStaysAsItIs)
{
    expectRefusalOf(exampleText().substr(0, 300), Qeapp::eFileDamaged, "line 12, byte 301: ");
}

TEST_F(DrawingFileLoad, ADamagedFile_IsRefusedWithThePlaceAndStaysAsItIs)
{
    expectRefusalOf(edited(exampleText(), R"("id": "8")", R"("id": "9")"), Qeapp::eFileDamaged,
                    "objects[6].entries[0].id: 9 names no object");
}

TEST_F(DrawingFileLoad, AFileOfANewerFormat_IsRefusedAndStaysAsItIs)
{
    expectRefusalOf(edited(exampleText(), R"("formatVersion": 1)", R"("formatVersion": 2)"), Qeapp::eFileTooNew,
                    "formatVersion: 2 is newer than this program, which understands 1");
}

TEST_F(DrawingFileLoad, OneGibibyteAndAByte_IsTooLarge)
{
    put(file, "{");
    fs::resize_file(file, kLargestDrawingFileInBytes + 1);
    expectRefusal(file, Qeapp::eFileTooLarge, "larger than the 1073741824 bytes that are read");
    EXPECT_EQ(fs::file_size(file), kLargestDrawingFileInBytes + 1);
}

TEST_F(DrawingFileLoad, NulsAfterTheDocument_AreDamage)
{
    put(file, exampleText());
    fs::resize_file(file, 10'000'000);
    expectRefusal(file, Qeapp::eFileDamaged, "line 44, byte ");
}

TEST_F(DrawingFileLoad, APlannedFailure_IsTheResult)
{
    put(file, exampleText());
    const ScopedFault fault({.call = "readWholeFile", .code = Qeapp::eOutOfMemory});
    expectRefusal(file, Qeapp::eOutOfMemory, "Input/output error");
}

} // namespace
} // namespace Tests
