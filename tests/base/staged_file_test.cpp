// Files that are replaced whole or not at all.
#include "base/staged_file_test.h"

namespace Tests {
namespace {

using namespace Embedded;
namespace fs = std::filesystem;

TEST_F(AtomicFile, ANewFile_HoldsTheText)
{
    write(file, "text\n");
    EXPECT_EQ(readFile(file), "text\n");
    EXPECT_EQ(folder.names(), Names{"a.txt"});
}

TEST_F(AtomicFile, AnExistingFile_IsReplaced)
{
    writeFile(file, "a much longer text than the new one");
    write(file, "new");
    EXPECT_EQ(readFile(file), "new");
    EXPECT_EQ(folder.names(), Names{"a.txt"});
}

TEST_F(AtomicFile, AnEmptyText_GivesAnEmptyFile)
{
    writeFile(file, "old");
    write(file, "");
    EXPECT_EQ(readFile(file), "");
}

TEST_F(AtomicFile, BytesOfEveryKind_AreKept)
{
    std::string text;
    for (int count = 0; count < 100'000; ++count)
        text += static_cast<char>(count);
    write(file, text);
    EXPECT_EQ(readFile(file), text);
}

TEST_F(AtomicFile, AFolderThatDoesNotExist_IsRefused)
{
    expectRefusal(folder.path() / "missing/a.txt", "No such file or directory");
}

TEST_F(AtomicFile, AFolderInThePlaceOfTheFile_IsRefused)
{
    expectRefusal(folder.path(), "Is a directory");
}

TEST_F(AtomicFile, TheLongestName_IsNotTooLongForTheTemporaryFile)
{
    const fs::path longest = folder.path() / std::string(255, 'x');
    write(longest, "text");
    EXPECT_EQ(readFile(longest), "text");
}

TEST_F(AtomicFile, AFileWithoutAFolder_IsInTheWorkingFolder)
{
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    write("a.txt", "text");
    fs::current_path(before);
    EXPECT_EQ(readFile(file), "text");
}

} // namespace
} // namespace Tests
