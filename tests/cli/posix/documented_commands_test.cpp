// Runs the commands of the pages as they stand there, each page in a folder of its own.
#include "project/command_blocks.h"

#include <algorithm>
#include <cctype>
#include <iostream>
#include <map>

#include "cli/command_line_test.h"
#include "cli/posix/page_shell.h"

namespace Tests {
namespace {

bool isRunHere(const CommandBlock& block)
{
    return block.remark("not run: ").empty() && block.remark("run by ").empty();
}

/// The paths of the pages that have commands to run.
std::vector<std::string> findPagesToRun()
{
    std::vector<std::string> pages;
    for (const SourceFile& page : readPagesWithCommands())
        if (std::ranges::any_of(findCommandBlocks(page), isRunHere))
            pages.push_back(page.path);
    return pages;
}

class DocumentedCommands : public CommandLineTest, public testing::WithParamInterface<std::string> {
protected:
    void runShell(const std::string& script, const std::string& place) const
    {
        const ProgramResult result = run(pageShell(script, path("")));
        EXPECT_EQ(result.status, 0) << place << ":\n" << script << result.errors;
    }
    void runConsole(const CommandBlock& block) const
    {
        for (const ConsoleCommand& one : splitConsole(block.text)) {
            const ProgramResult result = run(pageShell("exec 2>&1\n" + one.command, path("")));
            EXPECT_EQ(result.status, 0) << block.place << ":\n" << one.command << "\n" << result.output;
            EXPECT_TRUE(one.output.empty() || matchesOutput(one.output, result.output))
                << block.place << ":\n$ " << one.command << "\nexpected:\n"
                << one.output << "found:\n"
                << result.output;
        }
    }
};

TEST_P(DocumentedCommands, Blocks_DoWhatThePageShows)
{
    const std::filesystem::path root = ORVEL_SOURCE_DIR;
    for (const CommandBlock& block : findCommandBlocks(readFile(root, GetParam()))) {
        if (!isRunHere(block))
            continue;
        runShell(block.remark("first: "), block.place);
        if (block.showsOutput)
            runConsole(block);
        else
            runShell(block.text, block.place);
    }
}

std::string pageName(const testing::TestParamInfo<std::string>& page)
{
    std::string name;
    for (const char c : page.param)
        name += std::isalnum(static_cast<unsigned char>(c)) != 0 ? c : '_';
    return name;
}

INSTANTIATE_TEST_SUITE_P(Page, DocumentedCommands, testing::ValuesIn(findPagesToRun()), pageName);

bool isTestSuite(const std::string& name)
{
    const testing::UnitTest& tests = *testing::UnitTest::GetInstance();
    for (int index = 0; index < tests.total_test_suite_count(); ++index)
        if (tests.GetTestSuite(index)->name() == name)
            return true;
    return false;
}

using CommandsOfPages = PlatformTest;

TEST_F(CommandsOfPages, EachBlock_IsRunOrSaysWhyNot)
{
    int runBlocks = 0;
    std::map<std::string, int> reasons;
    for (const SourceFile& page : readPagesWithCommands())
        for (const CommandBlock& block : findCommandBlocks(page)) {
            if (const std::string reason = block.remark("not run: "); !reason.empty()) {
                ++reasons[reason];
                continue;
            }
            ++runBlocks;
            if (const std::string suite = block.remark("run by "); !suite.empty())
                EXPECT_TRUE(isTestSuite(suite)) << block.place << ": there is no test suite " << suite;
            else
                EXPECT_TRUE(block.comment.empty() || !block.remark("first: ").empty())
                    << block.place << ": expected \"not run: …\", \"run by …\" or \"first: …\", found \""
                    << block.comment << "\"";
        }
    std::cout << runBlocks << " blocks of commands are run\n";
    for (const auto& [reason, count] : reasons)
        std::cout << count << " are not run: " << reason << "\n";
    EXPECT_GT(runBlocks, 0);
}

} // namespace
} // namespace Tests
