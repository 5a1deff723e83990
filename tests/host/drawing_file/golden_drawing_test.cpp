// Drawings in the repository hold the format: they are read as what they say, and new ones are written as they are.
#include "host/drawing_file/drawing_file_test.h"
#include "host/drawing_file/golden_drawing.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

class GoldenDrawing : public DrawingFileTest, public testing::WithParamInterface<std::string> {
protected:
    GoldenDrawing() { createFromSql(file, goldenSql(GetParam())); }
};

TEST_P(GoldenDrawing, IsReadAsItsText)
{
    EXPECT_EQ(inFile(), goldenText(GetParam()));
}

TEST_P(GoldenDrawing, IsTheSameSqlAgain)
{
    EXPECT_EQ(dumpAsSql(file), goldenSql(GetParam()));
}

TEST_P(GoldenDrawing, HasTheChecksumsThatTheFormatsPageSays)
{
    DrawingSql(file).computeChecksums();
    EXPECT_EQ(dumpAsSql(file), goldenSql(GetParam()));
}

TEST_P(GoldenDrawing, StaysTheSameWhenItIsSavedUnchanged)
{
    const Database database = loaded(DrawingAccess::changing);
    drawingContents(*database); // loads all of it
    EXPECT_EQ(outcome(save(*database)), "0");
    EXPECT_EQ(dumpAsSql(file), goldenSql(GetParam()));
}

TEST_P(GoldenDrawing, IsNotChangedByReading)
{
    const std::string bytes = readFile(file);
    for (const DrawingAccess access : {DrawingAccess::reading, DrawingAccess::changing, DrawingAccess::sharing})
        drawingContents(*loaded(access));
    EXPECT_TRUE(readFile(file) == bytes);
}

INSTANTIATE_TEST_SUITE_P(Each, GoldenDrawing, testing::Values("empty", "version_29", "everything"),
                         [](const auto& name) { return name.param; });

class WrittenDrawing : public DrawingFileTest {};

TEST_F(WrittenDrawing, OfNothing_IsTheGoldenOne)
{
    given(GivenDrawing());
    EXPECT_EQ(dumpAsSql(file), goldenSql("empty"));
}

TEST_F(WrittenDrawing, OfEverything_IsTheGoldenOne)
{
    given(drawingOfEverything());
    EXPECT_EQ(dumpAsSql(file), goldenSql("everything"));
    EXPECT_EQ(drawingOfEverything().contents(), goldenText("everything"));
}

/// Of each format that was released the drawings stay here: every one of them is read, and changed into the newest
/// format by a save alone. (Format 1 was never released.)
TEST_F(WrittenDrawing, OfEachFormatThatThereWas_IsReadAndUpgradedBySaving)
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
            EXPECT_EQ(inFile(), text) << entry.path();
            EXPECT_TRUE(readFile(file) == bytes) << entry.path();
            EXPECT_EQ(outcome(save(*loaded(DrawingAccess::changing))), "0") << entry.path();
            EXPECT_EQ(inFile(), text) << entry.path();
            EXPECT_EQ(DrawingSql(file).integer("PRAGMA user_version"), 2) << entry.path();
        }
    }
    EXPECT_EQ(format - 1, 2) << "the newest format has no golden drawings";
}

} // namespace
} // namespace Tests
