// The option --wait, the time that a command waits for another process.
#include "command_line_test.h"

namespace Tests {
namespace {

using WaitOption = CommandLineTest;

TEST_F(WaitOption, NumberOfSeconds_IsAcceptedBeforeAndAfterTheCommand)
{
    for (const std::string seconds : {"0", "0.25", "10", "86400", "1.", ".5", "86400.0"}) {
        EXPECT_EQ(run({"--wait", seconds, "config", "items"}).status, 0) << seconds;
        EXPECT_EQ(run({"config", "items", "--wait=" + seconds}).status, 0) << seconds;
    }
}

TEST_F(WaitOption, InvalidNumber_IsWrongUsage)
{
    for (const std::string text : {"x", "1s", "1,5", "1e3", "0x10", "inf", "nan", "+1", " 1", "1 ", "-1", "-0.5",
                                   "86400.001", "86401", "1.2.3", ".", "99999999999999999999999999999999999999999"}) {
        expectWrongUsage(run({"config", "items", "--wait=" + text}),
                         "orvelcs: config items: --wait: expected a number of seconds from 0 to 86400, found " + text);
    }
}

TEST_F(WaitOption, InvalidNumberForACommandThatNeverWaits_IsWrongUsage)
{
    expectWrongUsage(run({"--wait", "soon", "catalog", "show", "EPSG:4326"}),
                     "orvelcs: catalog show: --wait: expected a number of seconds from 0 to 86400, found soon");
}

TEST_F(WaitOption, MissingOrRepeatedValue_IsWrongUsage)
{
    expectWrongUsage(run({"config", "items", "--wait"}), "orvelcs: config items: --wait: needs a value");
    expectWrongUsage(run({"config", "items", "--wait", ""}), "orvelcs: config items: --wait: is empty");
    expectWrongUsage(run({"--wait", "1", "config", "items", "--wait", "2"}),
                     "orvelcs: config items: --wait: is given more than once");
}

} // namespace
} // namespace Tests
