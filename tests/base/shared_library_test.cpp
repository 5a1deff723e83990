#include "embedded/base/shared_library.h"

#include <gtest/gtest.h>

#include "embedded/diagnostics/resource_counters.h"

namespace Tests {
namespace {

TEST(SharedLibrary, LibraryFile_IsTheOneThatContainsTheAddress)
{
    const std::filesystem::path file =
        Embedded::libraryFileAt(reinterpret_cast<const void*>(&Embedded::ResourceCounters::now));
    EXPECT_TRUE(std::filesystem::is_regular_file(file)) << file;
    EXPECT_NE(file.stem().string().find("fqcore"), std::string::npos) << file;
}

TEST(SharedLibrary, LibraryFile_IsEmptyForAnAddressOutsideAllLibraries)
{
    EXPECT_EQ(Embedded::libraryFileAt(nullptr), std::filesystem::path());
    const int local = 0;
    EXPECT_EQ(Embedded::libraryFileAt(&local), std::filesystem::path());
}

} // namespace
} // namespace Tests
