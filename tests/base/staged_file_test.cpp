// A file is replaced completely or not at all.
#include "base/staged_file_test.h"

namespace Tests {
namespace {

using namespace Embedded;
namespace fs = std::filesystem;

TEST_F(StagedFileTest, NewFile_HoldsTheText)
{
    write(file, "text\n");
    EXPECT_EQ(readFile(file), "text\n");
    EXPECT_EQ(folder.names(), Names{"a.txt"});
}

TEST_F(StagedFileTest, ExistingFile_IsReplaced)
{
    writeFile(file, "a much longer text than the new one");
    write(file, "new");
    EXPECT_EQ(readFile(file), "new");
    EXPECT_EQ(folder.names(), Names{"a.txt"});
}

TEST_F(StagedFileTest, EmptyText_GivesAnEmptyFile)
{
    writeFile(file, "old");
    write(file, "");
    EXPECT_EQ(readFile(file), "");
}

TEST_F(StagedFileTest, BytesOfEveryValue_AreWritten)
{
    std::string text;
    for (int count = 0; count < 100'000; ++count)
        text += static_cast<char>(count);
    write(file, text);
    EXPECT_EQ(readFile(file), text);
}

TEST_F(StagedFileTest, MissingFolder_IsRefused)
{
    expectRefusal(folder.path() / "missing/a.txt", "No such file or directory");
}

TEST_F(StagedFileTest, FolderAsTarget_IsRefused)
{
    expectRefusal(folder.path(), "Is a directory");
}

TEST_F(StagedFileTest, LongestName_IsWritten)
{
    const fs::path longest = folder.path() / std::string(255, 'x');
    write(longest, "text");
    EXPECT_EQ(readFile(longest), "text");
}

TEST_F(StagedFileTest, NameWithoutAFolder_IsInTheWorkingFolder)
{
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    write("a.txt", "text");
    fs::current_path(before);
    EXPECT_EQ(readFile(file), "text");
}

TEST_F(StagedFileTest, UnpublishedFile_IsRemoved)
{
    {
        auto staged = StagedFile::create(file);
        ASSERT_TRUE(staged && staged->write("text"));
        EXPECT_TRUE(fs::exists(staged->temporaryName()));
        EXPECT_EQ(staged->temporaryName().filename().string().substr(0, 8), ".saving-");
    }
    EXPECT_EQ(folder.names(), Names{});
}

TEST_F(StagedFileTest, PublishedFile_HasTheNameOfTheTarget)
{
    auto staged = StagedFile::create(file);
    ASSERT_TRUE(staged && staged->write("text"));
    EXPECT_EQ(staged->publish(), true);
    EXPECT_EQ(readFile(file), "text");
    EXPECT_EQ(folder.names(), Names{"a.txt"});
}

TEST_F(StagedFileTest, Publish_LeavesAnExistingFileUnchanged)
{
    writeFile(file, "old");
    {
        auto staged = StagedFile::create(file);
        ASSERT_TRUE(staged && staged->write("text"));
        EXPECT_EQ(staged->publish(), false);
    }
    EXPECT_EQ(readFile(file), "old");
    EXPECT_EQ(folder.names(), Names{"a.txt"});
}

} // namespace
} // namespace Tests
