// Failures that nothing catches end a program with status 70 if it is prepared as orvelcs is.
#include "cli/command_line_test.h"

namespace Tests {
namespace {

class UnhandledFailure : public CommandLineTest, public testing::WithParamInterface<std::string> {};

TEST_P(UnhandledFailure, AnyFailure_ExitsWithStatusSeventy)
{
    const ProgramResult result =
        run({.arguments = {GetParam()}, .input = {}, .environment = {}, .program = FAILING_PROGRAM});
    EXPECT_EQ(result.status, 70);
    EXPECT_EQ(result.output, "");
}

INSTANTIATE_TEST_SUITE_P(Each, UnhandledFailure, testing::Values("exception", "violation", "overflow", "abort"),
                         [](const auto& failure) { return failure.param; });

using PreparedProgram = CommandLineTest;

TEST_F(PreparedProgram, NormalEnd_KeepsItsStatus)
{
    EXPECT_EQ(run({.arguments = {"properly"}, .input = {}, .environment = {}, .program = FAILING_PROGRAM}).status, 3);
}

} // namespace
} // namespace Tests
