#include "embedded/base/path.h"

#include <gtest/gtest.h>

namespace Tests {
namespace {

TEST(Path, FromUtf8_HasItsCharacters)
{
    EXPECT_EQ(Embedded::pathFromUtf8("Pläne/a.qedb"), std::filesystem::path(u8"Pläne/a.qedb"));
    EXPECT_EQ(Embedded::displayName(Embedded::pathFromUtf8("Pläne/a.qedb")), "Pläne/a.qedb");
}

TEST(Path, FullPath_BeginsAtTheWorkingFolder)
{
    EXPECT_EQ(Embedded::fullPath("a.qedb"), std::filesystem::current_path() / "a.qedb");
}

} // namespace
} // namespace Tests
