// The hosted workflow calls what is there. scripts/check-workflow.py checks its form.
#include <gtest/gtest.h>

#include <regex>

#include "project/command_names.h"
#include "project/source_tree.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using HostedWorkflow = PlatformTest;

/// The text with each command at the beginning of a line.
std::string readCommands()
{
    static const std::regex key(R"(\n *(?:- )?run: )");
    return std::regex_replace(readFile(ORVEL_SOURCE_DIR, ".github/workflows/ci.yml").text, key, "\n");
}

TEST_F(HostedWorkflow, CallsTargetsPresetsAndScriptsThatExist)
{
    EXPECT_EQ(findUnknownNames(readCommands()), std::vector<std::string>{});
}

TEST_F(HostedWorkflow, RunsTheChecksOfAChange_AndThePresetForWindows)
{
    const std::string commands = readCommands();
    for (const char* command : {"\n.ci/run\n", "\ncmake --preset windows-native\n",
                                "\ncmake --build --preset windows-native\n", "\nctest --preset windows-native\n"})
        EXPECT_NE(commands.find(command), std::string::npos) << command;
}

} // namespace
} // namespace Tests
