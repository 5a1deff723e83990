// The pages that are made from the table of commands.
#include <cstdlib>

#include "command_line_test.h"

namespace Tests {
namespace {

struct CommandPage {
    const char* file;
    const char* option;
};

class CommandPages : public CommandLineTest, public testing::WithParamInterface<CommandPage> {};

/// With ORVEL_RENEW_PAGES in the environment it writes the page first.
TEST_P(CommandPages, Page_IsWhatTheProgramPrints)
{
    const auto& [file, option] = GetParam();
    const std::filesystem::path page = std::filesystem::path(ORVEL_SOURCE_DIR) / file;
    const ProgramResult printed = run({"commands", option});
    ASSERT_EQ(printed.status, 0) << printed.errors;
    ASSERT_GT(printed.output.size(), 10000U);
    if (std::getenv("ORVEL_RENEW_PAGES") != nullptr)
        writeFile(page, printed.output);
    EXPECT_EQ(readFile(page), printed.output)
        << file << " differs from the table of commands. To renew the pages, run\n"
        << "    ORVEL_RENEW_PAGES=1 build/release/bin/cli_tests --gtest_filter='*CommandPages*'";
}

INSTANTIATE_TEST_SUITE_P(Each, CommandPages,
                         testing::Values(CommandPage{"docs/orvelcs.1", "--man"},
                                         CommandPage{"docs/cli.md", "--markdown"}),
                         [](const auto& page) { return page.index == 0 ? "Manual" : "Markdown"; });

} // namespace
} // namespace Tests
