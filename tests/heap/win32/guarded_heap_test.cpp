// The heap that watches the test programs, watched: a program does one thing, wrong or right, and says how it ended.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "heap/win32/child_program.h"
#include "support/scoped_variable.h"

namespace Tests {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr unsigned kDamage = 86;
constexpr unsigned kLeak = 87;

ChildProgramEnd endOf(const std::string& deed)
{
    return runChildProgram(ORVEL_MISDEEDS_PROGRAM, deed);
}

struct DamageCase {
    const char* deed;
    const char* finding;
    const char* place; // empty where the report has none
};

std::ostream& operator<<(std::ostream& stream, const DamageCase& damage)
{
    return stream << damage.deed;
}

class GuardedHeapDamageTest : public testing::TestWithParam<DamageCase> {};

TEST_P(GuardedHeapDamageTest, DamageEndsTheProcessWithItsReportAndCode)
{
    const ChildProgramEnd end = endOf(GetParam().deed);
    EXPECT_EQ(end.exitCode, kDamage);
    EXPECT_THAT(end.output, HasSubstr(GetParam().finding));
    EXPECT_THAT(end.output, HasSubstr(GetParam().place));
}

INSTANTIATE_TEST_SUITE_P(
    All, GuardedHeapDamageTest,
    testing::Values(
        DamageCase{"write-behind", "write behind a block of 24 bytes", "the byte at 24 is 0x78"},
        DamageCase{"write-behind-array", "write behind a block of 12 bytes", "the byte at 12 is 0x1"},
        DamageCase{"write-behind-kept", "write behind a block of 5 bytes", "the byte at 8 is 0x78"},
        DamageCase{"write-behind-others-block", "write behind a block of 100 bytes", "the byte at 100 is 0x77"},
        DamageCase{"write-before", "write before a block of 24 bytes", "the byte at -1 is 0x78"},
        DamageCase{"write-after-free", "write to a freed block of 40 bytes", "the byte at 7 is 0x78"},
        DamageCase{"write-after-free-met-early", "write to a freed block of 40 bytes", "the byte at 7 is 0x78"},
        DamageCase{"use-after-reallocation", "write to a freed block of 24 bytes", "the byte at 0 is 0x78"},
        DamageCase{"free-twice", "second free of a block of 24 bytes", "  freed by misdeeds.exe+0x"},
        DamageCase{"delete-twice", "second free of a block of 4 bytes", "  freed by misdeeds.exe+0x"},
        DamageCase{"reallocate-freed", "second free of a block of 24 bytes", "  freed by misdeeds.exe+0x"},
        DamageCase{"free-inside", "free of an address that no allocation gave",
                   "  found in no test by misdeeds.exe+0x"},
        DamageCase{"free-variable", "free of an address that no allocation gave", ""},
        DamageCase{"free-stack", "free of an address that no allocation gave", ""},
        DamageCase{"free-initial-twice", "free of an address that no allocation gave", " lending_library.dll+0x"},
        DamageCase{"reallocate-inside", "realloc of an address that no allocation gave", ""}));

TEST(GuardedHeapReportTest, NamesTheLibraryThatAllocatedAndTheOneThatFreed)
{
    const ChildProgramEnd end = endOf("write-behind-others-block");
    EXPECT_THAT(end.output, HasSubstr("  allocated in no test by lending_library.dll+0x"));
    EXPECT_THAT(end.output, HasSubstr("  found in no test by lending_library.dll+0x"));
    // The callers of the library's functions are there too.
    EXPECT_THAT(end.output, HasSubstr(" misdeeds.exe+0x"));
}

TEST(GuardedHeapReportTest, EachLineBeginsWithTheHeapsName)
{
    const std::string output = endOf("free-twice").output;
    for (std::size_t start = 0; start < output.size(); start = output.find('\n', start) + 1)
        EXPECT_EQ(output.compare(start, 14, "guarded heap: "), 0) << output.substr(start);
    EXPECT_THAT(output, HasSubstr("guarded heap: the process ends with exit code 86\n"));
}

struct LeakCase {
    const char* deed;
    const char* finding;
    const char* total;
};

std::ostream& operator<<(std::ostream& stream, const LeakCase& leak)
{
    return stream << leak.deed;
}

class GuardedHeapLeakTest : public testing::TestWithParam<LeakCase> {};

TEST_P(GuardedHeapLeakTest, LeakIsReportedAndGivesTheProgramItsCode)
{
    const ChildProgramEnd end = endOf(GetParam().deed);
    EXPECT_EQ(end.exitCode, kLeak);
    EXPECT_THAT(end.output, HasSubstr("done"));
    EXPECT_THAT(end.output, HasSubstr(GetParam().finding));
    EXPECT_THAT(end.output, HasSubstr(GetParam().total));
}

INSTANTIATE_TEST_SUITE_P(All, GuardedHeapLeakTest,
                         testing::Values(LeakCase{"leak-one", "leak of 48 bytes", "leaks: 1 block, 48 bytes"},
                                         LeakCase{"leak-object", "leak of 28 bytes", "leaks: 2 blocks, 52 bytes"},
                                         LeakCase{"leak-cycle", "leak of 32 bytes", "leaks: 2 blocks, 64 bytes"},
                                         LeakCase{"leak-from-library", "allocated in no test by lending_library.dll+0x",
                                                  "leaks: 1 block, 100 bytes"},
                                         LeakCase{"unload-keeper", "allocated in no test by keeping_library.dll+0x",
                                                  "leaks: 1 block, 100 bytes"}));

class GuardedHeapSilenceTest : public testing::TestWithParam<const char*> {};

TEST_P(GuardedHeapSilenceTest, ProperUseIsNotRemarkedOn)
{
    const ChildProgramEnd end = endOf(GetParam());
    EXPECT_EQ(end.exitCode, 0u);
    EXPECT_EQ(end.output, "done\r\n");
}

INSTANTIATE_TEST_SUITE_P(All, GuardedHeapSilenceTest,
                         testing::Values("use-runtime-functions", "use-texts", "use-containers", "use-threads",
                                         "run-out", "fill-fresh", "exchange-blocks", "keep-in-variable",
                                         "keep-through-blocks", "keep-by-base-class", "keep-in-thread",
                                         "keep-on-other-stack", "keep-empty", "keep-in-library"));

TEST(GuardedHeapTest, ProgramsOwnExitCodeRemains)
{
    EXPECT_EQ(endOf("end-with-another-code").exitCode, 3u);
}

TEST(GuardedHeapTest, SwitchedOffItSeesNothing)
{
    const ScopedVariable off("ORVEL_GUARDED_HEAP", "off");
    const ChildProgramEnd end = endOf("leak-one");
    EXPECT_EQ(end.exitCode, 0u);
    EXPECT_EQ(end.output, "done\r\n");
}

} // namespace
} // namespace Tests
