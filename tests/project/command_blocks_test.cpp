#include "project/command_blocks.h"

#include <gtest/gtest.h>

#include "project/command_names.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using CommandBlocks = PlatformTest;

TEST_F(CommandBlocks, NoCommand_StandsOutsideSuchABlock)
{
    std::vector<std::string> complaints;
    for (const SourceFile& page : readPagesWithCommands())
        for (std::string& one : findHiddenCommands(page))
            complaints.push_back(std::move(one));
    EXPECT_EQ(joinLines(complaints), "");
}

TEST_F(CommandBlocks, CommandsThatAreNotRun_NameTargetsPresetsAndScriptsThatExist)
{
    std::vector<std::string> complaints;
    for (const SourceFile& page : readPagesWithCommands())
        for (const CommandBlock& block : findCommandBlocks(page))
            for (const std::string& name : findUnknownNames(block.text))
                complaints.push_back(block.place + ": there is no " + name);
    EXPECT_EQ(joinLines(complaints), "");
}

TEST_F(CommandBlocks, Blocks_AreFoundWithTheirHeadingsAndComments)
{
    const SourceFile page{"docs/a.md",
                          "# One\n\n```sh\na\n```\n## Two\n<!-- not run: builds -->\n\n```console\n$ b\nc\n"
                          "```\ntext\n```cpp\nint d;\n```\n```sh\ne\n```\n"};
    const std::vector<CommandBlock> blocks = findCommandBlocks(page);
    ASSERT_EQ(blocks.size(), 3U);
    EXPECT_EQ(blocks[0].place, "docs/a.md:3");
    EXPECT_EQ(blocks[0].text, "a\n");
    EXPECT_EQ(blocks[0].heading, "One");
    EXPECT_EQ(blocks[0].comment, "");
    EXPECT_FALSE(blocks[0].showsOutput);
    EXPECT_EQ(blocks[1].heading, "Two");
    EXPECT_EQ(blocks[1].remark("not run: "), "builds");
    EXPECT_EQ(blocks[1].remark("run by "), "");
    EXPECT_TRUE(blocks[1].showsOutput);
    EXPECT_EQ(blocks[2].text, "e\n");
    EXPECT_EQ(blocks[2].comment, "");
}

TEST_F(CommandBlocks, HiddenCommands_AreFoundInIndentedAndOtherBlocks)
{
    EXPECT_EQ(findHiddenCommands({"a.md", "text\n\n    make test\n\n```\n$ orvelcs\n```\n"}).size(), 2U);
    EXPECT_EQ(findHiddenCommands({"a.md", "```sh\nmake\n```\n- text\n    make of it\n\n```\nmakefile\n```\n"}).size(),
              0U);
}

TEST_F(CommandBlocks, ConsoleBlock_IsCutIntoCommandsAndOutputs)
{
    const std::vector<ConsoleCommand> commands = splitConsole("$ a \\\n  b\nc\nd\n$ e\n");
    ASSERT_EQ(commands.size(), 2U);
    EXPECT_EQ(commands[0].command, "a \\\n  b");
    EXPECT_EQ(commands[0].output, "c\nd\n");
    EXPECT_EQ(commands[1].command, "e");
    EXPECT_EQ(commands[1].output, "");
}

TEST_F(CommandBlocks, Ellipsis_StandsForLinesAndForTheRestOfALine)
{
    EXPECT_TRUE(matchesOutput("a\nb\n", "a\nb\n"));
    EXPECT_TRUE(matchesOutput("a\n…\nc…\n", "a\nb\nb\ncd\n"));
    EXPECT_TRUE(matchesOutput("a\n…\n", "a\n"));
    EXPECT_TRUE(matchesOutput("…\nb\n", "b\na\nb\n"));
    EXPECT_FALSE(matchesOutput("a\n", "a\nb\n"));
    EXPECT_FALSE(matchesOutput("a\nb\n", "a\n"));
    EXPECT_FALSE(matchesOutput("a\n…\nc\n", "a\nb\n"));
    EXPECT_FALSE(matchesOutput("a…\n", "b\n"));
}

} // namespace
} // namespace Tests
