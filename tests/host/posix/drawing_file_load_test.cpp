// Opening what only this system has in the place of drawing files.
#include "host/drawing_file_load_test.h"

#include <sys/stat.h>

#include "host/posix/child_process.h"

namespace Tests {
namespace {

using namespace Embedded;
namespace fs = std::filesystem;

TEST_F(DrawingFileLoad, APlaceBelowAFile_IsNotFound)
{
    put(file, "text");
    expectRefusal(file / "b.qedb", Qeapp::eFileNotFound, "Not a directory");
}

TEST_F(DrawingFileLoad, ALinkToNothing_IsNotFound)
{
    fs::create_symlink("missing", file);
    expectRefusal(file, Qeapp::eFileNotFound, "No such file or directory");
}

TEST_F(DrawingFileLoad, AFileThatMayNotBeRead_IsNotFound)
{
    put(file, exampleText());
    ASSERT_EQ(::chmod(file.c_str(), 0), 0);
    ASSERT_EQ(::chmod(folder.path().c_str(), 0755), 0);
    const std::string answer = answerAsOrdinaryUser([this] {
        std::unique_ptr<QeDbDatabase> database;
        const FileResult result = loadDrawing(file, database);
        return std::to_string(result.status) + " " + result.message;
    });
    EXPECT_EQ(answer, "50 " + file.string() + ": Permission denied");
}

TEST_F(DrawingFileLoad, APipe_IsNoDrawingAndIsNotWaitedFor)
{
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);
    expectRefusal(file, Qeapp::eFileDamaged, "is not a regular file");
}

} // namespace
} // namespace Tests
