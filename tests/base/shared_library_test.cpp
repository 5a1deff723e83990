#include "embedded/base/library_file.h"

#include <gtest/gtest.h>

#include "embedded/diagnostics/resource_counters.h"

namespace Tests {
namespace {

TEST(LibraryFile, IsTheOneThatHoldsTheAddress)
{
    const std::filesystem::path file =
        Embedded::libraryFileOf(reinterpret_cast<const void*>(&Embedded::ResourceCounters::now));
    EXPECT_TRUE(std::filesystem::is_regular_file(file)) << file;
    EXPECT_NE(file.stem().string().find("fqcore"), std::string::npos) << file;
}

TEST(LibraryFile, IsNoneForAnAddressOutsideOfEach)
{
    EXPECT_EQ(Embedded::libraryFileOf(nullptr), std::filesystem::path());
    const int local = 0;
    EXPECT_EQ(Embedded::libraryFileOf(&local), std::filesystem::path());
}

} // namespace
} // namespace Tests
