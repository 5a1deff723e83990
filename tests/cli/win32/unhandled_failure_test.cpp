// What nothing catches ends a program that is prepared as orvelcs is with a status of its own.
#include "cli/command_line_test.h"

namespace Tests {
namespace {

class UnhandledFailure : public CommandLineTest, public testing::WithParamInterface<std::string> {};

TEST_P(UnhandledFailure, IsStatusSeventy)
{
    const ProgramResult result =
        run({.arguments = {GetParam()}, .input = {}, .environment = {}, .program = FAILING_PROGRAM});
    EXPECT_EQ(result.status, 70);
    EXPECT_EQ(result.output, "");
}

INSTANTIATE_TEST_SUITE_P(Each, UnhandledFailure, testing::Values("exception", "violation", "overflow", "abort"),
                         [](const auto& way) { return way.param; });

using EndedProgram = CommandLineTest;

TEST_F(EndedProgram, HasTheStatusThatItAnswers)
{
    EXPECT_EQ(run({.arguments = {"properly"}, .input = {}, .environment = {}, .program = FAILING_PROGRAM}).status, 3);
}

} // namespace
} // namespace Tests
