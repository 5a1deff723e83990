#include <gtest/gtest.h>

#include <string>

#include "project/file_budgets.h"
#include "project/source_tree.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using FileBudgetsTest = PlatformTest;

std::string makeLines(int count)
{
    std::string text;
    for (int line = 0; line < count; ++line)
        text += "x\n";
    return text;
}

TEST_F(FileBudgetsTest, EveryFileOfTheProject_KeepsItsBudget)
{
    EXPECT_EQ(joinLines(findFilesOverBudget(readProjectSources())), "");
}

TEST_F(FileBudgetsTest, FileWithFewerLinesThanItsLimit_IsWithinItsBudget)
{
    EXPECT_EQ(joinLines(findFilesOverBudget({{"src/a.h", makeLines(199)}, {"src/a.cpp", makeLines(399)}})), "");
}

TEST_F(FileBudgetsTest, HeaderOfAPlatformToCopy_HasNoBudget)
{
    EXPECT_EQ(joinLines(findFilesOverBudget({{"examples/port/platform/host.h", makeLines(500)},
                                             {"tests/porting/strict/platform/host.h", makeLines(500)}})),
              "");
    EXPECT_EQ(findFilesOverBudget({{"platform/host/a.h", makeLines(500)}, {"src/platform/a.h", makeLines(500)}}).size(),
              2U);
}

TEST_F(FileBudgetsTest, FileWithAsManyLinesAsItsLimit_IsOverItsBudget)
{
    EXPECT_EQ(joinLines(findFilesOverBudget({{"src/a.h", makeLines(200)}, {"src/a.cpp", makeLines(400)}})),
              "src/a.h: 200 lines, where fewer than 200 are allowed\n"
              "src/a.cpp: 400 lines, where fewer than 400 are allowed\n");
}

TEST_F(FileBudgetsTest, LastLineWithoutItsEnd_Counts)
{
    EXPECT_EQ(findFilesOverBudget({{"src/a.h", makeLines(199) + "x"}}).size(), 1U);
}

} // namespace
} // namespace Tests
