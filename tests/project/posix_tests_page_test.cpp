// docs/testing.md lists the tests that the Windows edition leaves out.
#include <gtest/gtest.h>

#include <filesystem>

#include "project/source_tree.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using PosixTestsPage = PlatformTest;

bool isForPosixAlone(const std::filesystem::path& file)
{
    return file.parent_path().filename() == "posix" && file.stem().string().ends_with("_test");
}

TEST_F(PosixTestsPage, NamesEachTestThatOnlyPosixHas)
{
    const std::string page = readFile(ORVEL_SOURCE_DIR, "docs/testing.md").text;
    std::vector<std::string> complaints;
    for (const SourceFile& source : readFiles(ORVEL_SOURCE_DIR, {"tests"}, {".cpp"})) {
        const std::filesystem::path file(source.path);
        if (isForPosixAlone(file) && page.find('`' + file.stem().string() + '`') == std::string::npos &&
            page.find('/' + file.stem().string() + '`') == std::string::npos)
            complaints.push_back(source.path + " is not on docs/testing.md");
    }
    EXPECT_EQ(joined(complaints), "");
}

} // namespace
} // namespace Tests
