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

TEST_F(FileBudgetsTest, HeaderOf199Lines_IsWithinItsBudget)
{
    EXPECT_TRUE(findFilesOverBudget({{"src/a.h", makeLines(199)}}).empty());
}

TEST_F(FileBudgetsTest, HeaderOf200Lines_IsOverItsBudget)
{
    EXPECT_EQ(joinLines(findFilesOverBudget({{"src/a.h", makeLines(200)}})),
              "src/a.h: 200 lines, where fewer than 200 are allowed\n");
}

TEST_F(FileBudgetsTest, SourceOf399Lines_IsWithinItsBudget)
{
    EXPECT_TRUE(findFilesOverBudget({{"src/a.cpp", makeLines(399)}}).empty());
}

TEST_F(FileBudgetsTest, SourceOf400Lines_IsOverItsBudget)
{
    EXPECT_EQ(joinLines(findFilesOverBudget({{"src/a.cpp", makeLines(400)}})),
              "src/a.cpp: 400 lines, where fewer than 400 are allowed\n");
}

TEST_F(FileBudgetsTest, LastLineWithoutItsEnd_Counts)
{
    EXPECT_EQ(findFilesOverBudget({{"src/a.h", makeLines(199) + "x"}}).size(), 1U);
}

} // namespace
} // namespace Tests
