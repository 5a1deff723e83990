#include "project/command_names.h"

#include <gtest/gtest.h>

#include "support/platform_test.h"

namespace Tests {
namespace {

using CommandNames = PlatformTest;
using Strings = std::vector<std::string>;

TEST_F(CommandNames, NamesThatExist_AreKnown)
{
    EXPECT_EQ(findUnknownNames("make test\nmake check-asan && make mutate SINCE=HEAD\ncmake --preset release\n"
                               "ctest --preset=dev\n.ci/run\nscripts/demo.sh build\n"),
              Strings{});
}

TEST_F(CommandNames, NamesThatAreMissing_AreFound)
{
    EXPECT_EQ(findUnknownNames("make nothing\ncmake --preset release; cmake --preset other\n  scripts/nothing.sh\n"),
              (Strings{"make target nothing", "preset other", "script scripts/nothing.sh"}));
}

TEST_F(CommandNames, WordsThatAreNoCommands_AreIgnored)
{
    EXPECT_EQ(findUnknownNames("orvelcs make\n# make it\ncmake -S . -B build\n"), Strings{});
}

} // namespace
} // namespace Tests
