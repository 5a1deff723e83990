// The golden drawings keep the format stable: the host reads them as their text, and writes the same drawings again.
#include "host/drawing_file/drawing_file_test.h"
#include "host/drawing_file/golden_drawing.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

class GoldenDrawing : public DrawingFileTest, public testing::WithParamInterface<std::string> {
protected:
    GoldenDrawing() { createFromSql(file, goldenSql(GetParam())); }
};

TEST_P(GoldenDrawing, GoldenDrawing_HasItsExpectedContents)
{
    EXPECT_EQ(fileContents(), goldenText(GetParam()));
}

TEST_P(GoldenDrawing, GoldenDrawing_IsDumpedAsTheSameSql)
{
    EXPECT_EQ(dumpAsSql(file), goldenSql(GetParam()));
}

TEST_P(GoldenDrawing, GoldenDrawing_HasTheChecksumsOfTheFormatPage)
{
    DrawingSql(file).computeChecksums();
    EXPECT_EQ(dumpAsSql(file), goldenSql(GetParam()));
}

TEST_P(GoldenDrawing, GoldenDrawing_StaysTheSameWhenItIsSavedUnchanged)
{
    const Database database = loadFile(DrawingAccess::changing);
    drawingContents(*database); // loads every object
    EXPECT_EQ(outcome(save(*database)), "0");
    EXPECT_EQ(dumpAsSql(file), goldenSql(GetParam()));
}

TEST_P(GoldenDrawing, GoldenDrawing_StaysTheSameWhenItIsRead)
{
    const std::string bytes = readFile(file);
    for (const DrawingAccess access : {DrawingAccess::reading, DrawingAccess::changing, DrawingAccess::sharing})
        drawingContents(*loadFile(access));
    EXPECT_TRUE(readFile(file) == bytes);
}

INSTANTIATE_TEST_SUITE_P(Each, GoldenDrawing, testing::Values("empty", "version_29", "everything"),
                         [](const auto& name) { return name.param; });

class WrittenDrawing : public DrawingFileTest {};

TEST_F(WrittenDrawing, EmptyDrawing_IsWrittenAsTheGoldenOne)
{
    writeDrawing(GivenDrawing());
    EXPECT_EQ(dumpAsSql(file), goldenSql("empty"));
}

TEST_F(WrittenDrawing, DrawingOfEverything_IsWrittenAsTheGoldenOne)
{
    writeDrawing(drawingOfEverything());
    EXPECT_EQ(dumpAsSql(file), goldenSql("everything"));
    EXPECT_EQ(drawingOfEverything().contents(), goldenText("everything"));
}

/// The repository keeps golden drawings of every released format. A save upgrades them to the newest one. Format 1 was
/// never released.
TEST_F(WrittenDrawing, DrawingOfEachReleasedFormat_IsReadAndUpgradedBySaving)
{
    constexpr int kFirstFormat = 2;
    int format = kFirstFormat;
    for (; fs::exists(goldenFolder(format)); ++format) {
        for (const auto& entry : fs::directory_iterator(goldenFolder(format))) {
            if (entry.path().extension() != ".sql")
                continue;
            fs::remove(file);
            createFromSql(file, readFile(entry.path()));
            const std::string bytes = readFile(file);
            const std::string text = readFile(fs::path(entry.path()).replace_extension(".txt"));
            EXPECT_EQ(fileContents(), text) << entry.path();
            EXPECT_TRUE(readFile(file) == bytes) << entry.path();
            EXPECT_EQ(outcome(save(*loadFile(DrawingAccess::changing))), "0") << entry.path();
            EXPECT_EQ(fileContents(), text) << entry.path();
            EXPECT_EQ(DrawingSql(file).integer("PRAGMA user_version"), 2) << entry.path();
        }
    }
    EXPECT_EQ(format - 1, 2) << "the newest format has no golden drawings";
}

} // namespace
} // namespace Tests
