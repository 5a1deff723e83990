// Runs that a shell sets up.
#include "cli/command_line_test.h"

namespace Tests {
namespace {

using InAShell = CommandLineTest;

// Bytes that would unpack to 64 times their size.
TEST_F(InAShell, LargeInputToDecode_IsRefusedWithoutBeingUnpacked)
{
    ProgramRun limited;
    limited.program = "/bin/sh";
    limited.arguments = {"-c", "ulimit -t 20; exec \"$0\" decode", ORVELCS_PROGRAM};
    limited.input = std::string(20'000'000, '\x80');
    const ProgramResult result = run(limited);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_TRUE(result.errors.ends_with(", which would end with a NUL\n")) << result.errors;
}

TEST_F(InAShell, ALineToTransformIsAnsweredBeforeTheNextIsAskedFor)
{
    ProgramRun script;
    script.program = "/bin/sh";
    script.arguments = {
        "-c",
        "mkfifo points answers\n"
        "\"$1\" transform -q EPSG:4258 EPSG:25832 <points >answers &\n"
        "exec 3>points 4<answers\n"
        "for point in '0 9' '0 9 5'; do echo \"$point\" >&3; read -r answer <&4; echo \"$answer\"; done\n"
        "exec 3>&-\n"
        "wait $!\n",
        "sh", ORVELCS_PROGRAM};
    expectResult(run(script), 0, "500000.000000 0.000000\n500000.000000 0.000000 5.000000\n", "");
}

TEST_F(InAShell, AFailingPoint_IsToldBehindItsAnswerWhereOutputAndErrorsAreOne)
{
    std::string points;
    std::string answers;
    for (int index = 0; index < 1000; ++index) {
        const bool fails = index % 500 == 300;
        points += fails ? (index < 500 ? "95 9\n" : "x\n") : "0 9\n";
        answers += fails ? "*\n" : "500000.000000 0.000000\n";
        if (index == 300)
            answers += "orvelcs: transform: line 301: Invalid coordinate\n";
    }
    ProgramRun script;
    script.program = "/bin/sh";
    script.arguments = {"-c", "exec \"$1\" transform -q EPSG:4258 EPSG:25832 2>&1", "sh", ORVELCS_PROGRAM};
    script.input = points;
    expectResult(run(script), 1,
                 answers + "orvelcs: transform: standard input: 2 of 1000 points could not be transformed\n", "");
}

TEST_F(InAShell, PointsThatCannotBeRead_LeaveACompleteJsonDocument)
{
    ProgramRun script;
    script.program = "/bin/sh";
    script.arguments = {"-c", "exec \"$1\" transform --json EPSG:4258 EPSG:25832 </", "sh", ORVELCS_PROGRAM};
    const ProgramResult result = run(script);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(Json::parse(result.output)["points"], Json::array());
    EXPECT_TRUE(result.errors.ends_with("standard input: cannot be read: Is a directory\n")) << result.errors;
}

} // namespace
} // namespace Tests
