// Files that are replaced whole or not at all.
#include "atomic_file_test.h"
#include "embedded/foundation/faults.h"

namespace Tests {
namespace {

using namespace Embedded;
namespace fs = std::filesystem;

TEST_F(AtomicFile, ANewFile_HoldsTheText)
{
    write(file, "text\n");
    EXPECT_EQ(contentsOf(file), "text\n");
    EXPECT_EQ(namesIn(folder.path()), Names{"a.qedb"});
}

TEST_F(AtomicFile, AnExistingFile_IsReplaced)
{
    put(file, "a much longer text than the new one");
    write(file, "new");
    EXPECT_EQ(contentsOf(file), "new");
    EXPECT_EQ(namesIn(folder.path()), Names{"a.qedb"});
}

TEST_F(AtomicFile, AnEmptyText_GivesAnEmptyFile)
{
    put(file, "old");
    write(file, "");
    EXPECT_EQ(contentsOf(file), "");
}

TEST_F(AtomicFile, BytesOfEveryKind_AreKept)
{
    std::string text;
    for (int count = 0; count < 100'000; ++count)
        text += static_cast<char>(count);
    write(file, text);
    EXPECT_EQ(contentsOf(file), text);
}

TEST_F(AtomicFile, AFolderThatDoesNotExist_IsRefused)
{
    expectRefusal(folder.path() / "missing/a.qedb", "No such file or directory");
}

TEST_F(AtomicFile, AFolderInThePlaceOfTheFile_IsRefused)
{
    expectRefusal(folder.path(), "Is a directory");
}

TEST_F(AtomicFile, TheLongestName_IsNotTooLongForTheTemporaryFile)
{
    const fs::path longest = folder.path() / std::string(255, 'x');
    write(longest, "text");
    EXPECT_EQ(contentsOf(longest), "text");
}

TEST_F(AtomicFile, AFileWithoutAFolder_IsInTheWorkingFolder)
{
    const fs::path before = fs::current_path();
    fs::current_path(folder.path());
    write("a.qedb", "text");
    fs::current_path(before);
    EXPECT_EQ(contentsOf(file), "text");
}

class AtomicFileStep : public AtomicFile, public testing::WithParamInterface<std::string> {
protected:
    void expectFailure(const std::string& reason)
    {
        const ScopedFault fault({.call = "writeFileAtomically." + GetParam(), .occurrence = 1, .code = {}});
        expectRefusal(file, reason);
        EXPECT_EQ(Faults::struck(), 1U);
    }
    std::string reason() const
    {
        return GetParam() == "open"    ? "Permission denied"
               : GetParam() == "write" ? "No space left on device"
                                       : "Input/output error";
    }
};

TEST_P(AtomicFileStep, ThatFails_LeavesTheOldFile)
{
    put(file, "old");
    expectFailure(reason());
    EXPECT_EQ(contentsOf(file), "old");
    EXPECT_EQ(namesIn(folder.path()), Names{"a.qedb"});
}

TEST_P(AtomicFileStep, ThatFails_LeavesNothingWhereNothingWas)
{
    expectFailure(reason());
    EXPECT_EQ(namesIn(folder.path()), Names{});
}

INSTANTIATE_TEST_SUITE_P(Each, AtomicFileStep, testing::Values("open", "write", "sync", "rename"),
                         [](const auto& step) { return step.param; });

TEST_F(AtomicFile, APlannedCode_IsTheResult)
{
    const ScopedFault fault({.call = "writeFileAtomically.sync", .code = Qeapp::eVetoed});
    EXPECT_EQ(writeFileAtomically(file, "new").status, Qeapp::eVetoed);
}

} // namespace
} // namespace Tests
