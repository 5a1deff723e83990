// Runs that need a limit or pipes of a shell.
#include <algorithm>

#include "cli/command_line_test.h"
#include "cli/posix/shell_run.h"

namespace Tests {
namespace {

using ShellScript = CommandLineTest;

// These bytes would unpack to 64 times their size.
TEST_F(ShellScript, LargeInputToDecode_IsRefusedWithoutBeingUnpacked)
{
    const ProgramResult result = run(shellRun("ulimit -t 20; exec \"$0\" decode", std::string(20'000'000, '\x80')));
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.output, "");
    EXPECT_TRUE(result.errors.ends_with(", which would end with a NUL\n")) << result.errors;
}

// The limit is on processor time, so that other programs on the machine make no difference.
TEST_F(ShellScript, UnknownCodeOverThousandsOfDrawings_IsOneMessageInLessThanASecond)
{
    constexpr int kSeconds = ORVEL_CATALOG_STRIDE == 1 ? 1 : 20; // sanitizers and valgrind take many times as long
    std::string list;
    for (int index = 0; index < 3000; ++index)
        list += std::to_string(index) + ".qedb\n";
    given("list", list);
    for (const std::string option : {"", " --json"}) {
        const ProgramResult result = run(shellRun("ulimit -t " + std::to_string(kSeconds) +
                                                  "; exec \"$0\" assign EPGS:25832 --files-from list" + option));
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.errors, testing::StartsWith("orvelcs: assign: EPGS:25832: eInvalidInput (3): "));
        EXPECT_EQ(std::ranges::count(result.errors, '\n'), 1);
    }
}

TEST_F(ShellScript, LibraryInTheCurrentFolder_IsNotLoaded)
{
    const ProgramResult result =
        run(shellRun("libraries=$(cd \"$(dirname \"$0\")\" && echo *.so*)\n"
                     "for name in libc.so.6 libstdc++.so.6 $libraries; do echo x >$name; done\n"
                     "exec \"$0\" --version"));
    EXPECT_EQ(result.status, 0) << result.errors;
}

TEST_F(ShellScript, EachTransformedPoint_IsPrintedBeforeTheNextIsRead)
{
    const ProgramRun script =
        shellRun("mkfifo points answers\n"
                 "\"$0\" transform -q EPSG:4258 EPSG:25832 <points >answers &\n"
                 "exec 3>points 4<answers\n"
                 "for point in '0 9' '0 9 5'; do echo \"$point\" >&3; read -r answer <&4; echo \"$answer\"; done\n"
                 "exec 3>&-\n"
                 "wait $!\n");
    expectResult(run(script), 0, "500000.000000 0.000000\n500000.000000 0.000000 5.000000\n", "");
}

TEST_F(ShellScript, ErrorOfAPoint_FollowsItsResultWhereOutputAndErrorsGoToOneFile)
{
    std::string points;
    std::string results;
    for (int index = 0; index < 1000; ++index) {
        const bool fails = index % 500 == 300;
        points += fails ? (index < 500 ? "95 9\n" : "x\n") : "0 9\n";
        results += fails ? "*\n" : "500000.000000 0.000000\n";
        if (index == 300)
            results += "orvelcs: transform: line 301: not a place on the Earth, such as a latitude beyond 90 degrees\n";
        if (index == 800)
            results += "orvelcs: transform: line 801: expected 2 to 4 numbers, found \"x\"\n";
    }
    ProgramRun script = shellRun("exec \"$0\" transform -q EPSG:4258 EPSG:25832 2>&1");
    script.input = points;
    expectResult(run(script), 1,
                 results + "orvelcs: transform: standard input: 2 of 1000 points could not be transformed\n", "");
}

// The output is longer than what a pipe holds, so that the program cannot end before the reader.
TEST_F(ShellScript, ReaderThatGoesAway_EndsABatchSilently)
{
    givenDrawingWith("a.qedb", "EPSG:25832");
    std::string list;
    for (int index = 0; index < 500; ++index)
        list += "a.qedb\n";
    given("list", list);
    for (const std::string option : {"", " --json"}) {
        const ProgramRun script = shellRun("mkfifo pipe; \"$0\" show --wkt --files-from list" + option +
                                           " >pipe & head -n 1 pipe; wait $!; echo $?; rm pipe");
        expectResult(run(script), 0, option.empty() ? "a.qedb\n141\n" : "[\n141\n", "");
    }
}

TEST_F(ShellScript, UnreadablePoints_LeaveACompleteJsonDocument)
{
    const ProgramResult result = run(shellRun("exec \"$0\" transform --json EPSG:4258 EPSG:25832 </"));
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(Json::parse(result.output)["points"], Json::array());
    EXPECT_TRUE(result.errors.ends_with("standard input: cannot be read: Is a directory\n")) << result.errors;
}

} // namespace
} // namespace Tests
