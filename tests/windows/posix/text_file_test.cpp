// Arguments that only the stand-in refuses, and failures that only this system can cause.
#include "windows/text_file_test.h"

#include <cerrno>

namespace Tests {
namespace {

namespace fs = std::filesystem;
using TextFileStandIn = TextFileTest;

TEST_F(TextFileStandIn, OtherModesAndNull_AreRefused)
{
    for (const wchar_t* const mode : {L"", L"x", L"rw", L"r+", L"rtb", L"t", static_cast<const wchar_t*>(nullptr)}) {
        EXPECT_EQ(open(mode), nullptr);
        EXPECT_EQ(errno, EINVAL);
    }
    EXPECT_EQ(_wfsopen(nullptr, L"r", _SH_DENYNO), nullptr);
    EXPECT_EQ(_wfsopen(wideName(file).c_str(), L"w", 0x10),
              nullptr); // asks for a lock, which the stand-in does not have
    EXPECT_FALSE(fs::exists(file));
}

TEST_F(TextFileStandIn, FullDisk_IsReported)
{
    fs::create_symlink("/dev/full", file);
    std::FILE* const stream = open(L"w");
    ASSERT_NE(stream, nullptr);
    EXPECT_GE(std::fputs("line\n", stream), 0);
    EXPECT_EQ(std::fflush(stream), EOF);
    EXPECT_EQ(errno, ENOSPC);
    EXPECT_NE(std::ferror(stream), 0);
    static_cast<void>(std::fclose(stream)); // it may try to write the text again
}

} // namespace
} // namespace Tests
