#include "orvelcs/cli/wait.h"

#include <chrono>
#include <cmath>
#include <optional>
#include <utility>

#include <fmt/format.h>

#include "embedded/base/parse_number.h"
#include "orvelcs/cli/command.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/cli/interruption.h"

namespace Orvelcs {
namespace {

using std::chrono::milliseconds;

constexpr double kMostSeconds = 86400;
constexpr milliseconds kUntilShown{500};

double& secondsToWait()
{
    static double seconds = 10;
    return seconds;
}

} // namespace

void addWaitOption(CLI::App& program, WaitOption& wait)
{
    wait.option = addArgument(program, "--wait SECONDS", wait.seconds,
                              "how long to wait for another process; 0 means not at all", {.defaultValue = "10"});
}

void applyWaitOption(const WaitOption& wait)
{
    if (wait.option->count() == 0)
        return;
    const std::optional<double> seconds = Embedded::parseReal(wait.seconds, std::chars_format::fixed);
    if (!seconds || !(*seconds >= 0 && *seconds <= kMostSeconds)) // false for "nan" too
        throw wrongUsage(
            "--wait", fmt::format("expected a number of seconds from 0 to {}, found {}", kMostSeconds, wait.seconds));
    secondsToWait() = *seconds;
}

Embedded::LockWait waitFor(const std::string& what, const Output& output)
{
    Embedded::LockWait wait;
    wait.longest = milliseconds(std::llround(std::ceil(secondsToWait() * 1000)));
    wait.onPause = [what, &output, isShown = false](milliseconds waited) mutable {
        if (waited < kUntilShown)
            isShown = false; // another wait has begun
        else if (!std::exchange(isShown, true))
            output.showWaiting(what);
    };
    wait.isCancelled = isInterrupted;
    return wait;
}

std::string lockedMessage()
{
    if (isInterrupted())
        return "another process holds it";
    return fmt::format("another process holds it, after {} s still; try again, or wait longer with --wait SECONDS",
                       secondsToWait());
}

} // namespace Orvelcs
