// docs/testing.md lists the tests that do not run on Windows.
#include <gtest/gtest.h>

#include <filesystem>

#include "project/source_tree.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using PosixTestsPage = PlatformTest;

bool isTestOfPosixOnly(const std::filesystem::path& file)
{
    return file.parent_path().filename() == "posix" && file.stem().string().ends_with("_test");
}

TEST_F(PosixTestsPage, TestingPage_NamesEachTestOfPosixOnly)
{
    const std::string page = readFile(ORVEL_SOURCE_DIR, "docs/testing.md").text;
    std::vector<std::string> complaints;
    for (const SourceFile& source : readFiles(ORVEL_SOURCE_DIR, {"tests"}, {".cpp"})) {
        const std::filesystem::path file(source.path);
        if (isTestOfPosixOnly(file) && page.find('`' + file.stem().string() + '`') == std::string::npos &&
            page.find('/' + file.stem().string() + '`') == std::string::npos)
            complaints.push_back(source.path + " is not on docs/testing.md");
    }
    EXPECT_EQ(joinLines(complaints), "");
}

} // namespace
} // namespace Tests
