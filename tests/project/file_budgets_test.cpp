#include <gtest/gtest.h>

#include <string>

#include "project/file_budgets.h"
#include "project/source_tree.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using FileBudgetsTest = PlatformTest;

std::string textOfLines(int count)
{
    std::string text;
    for (int line = 0; line < count; ++line)
        text += "x\n";
    return text;
}

TEST_F(FileBudgetsTest, EveryFileOfTheProject_KeepsItsBudget)
{
    EXPECT_EQ(joined(filesOverBudget(readProjectSources())), "");
}

TEST_F(FileBudgetsTest, HeaderOf199Lines_IsWithinItsBudget)
{
    EXPECT_TRUE(filesOverBudget({{"src/a.h", textOfLines(199)}}).empty());
}

TEST_F(FileBudgetsTest, HeaderOf200Lines_IsOverItsBudget)
{
    EXPECT_EQ(joined(filesOverBudget({{"src/a.h", textOfLines(200)}})),
              "src/a.h: 200 lines, where fewer than 200 are allowed\n");
}

TEST_F(FileBudgetsTest, SourceOf399Lines_IsWithinItsBudget)
{
    EXPECT_TRUE(filesOverBudget({{"src/a.cpp", textOfLines(399)}}).empty());
}

TEST_F(FileBudgetsTest, SourceOf400Lines_IsOverItsBudget)
{
    EXPECT_EQ(joined(filesOverBudget({{"src/a.cpp", textOfLines(400)}})),
              "src/a.cpp: 400 lines, where fewer than 400 are allowed\n");
}

TEST_F(FileBudgetsTest, LastLineWithoutItsEnd_Counts)
{
    EXPECT_EQ(filesOverBudget({{"src/a.h", textOfLines(199) + "x"}}).size(), 1U);
}

} // namespace
} // namespace Tests
