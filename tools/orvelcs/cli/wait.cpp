#include "orvelcs/cli/wait.h"

#include <charconv>
#include <chrono>
#include <cmath>
#include <optional>
#include <utility>

#include <fmt/format.h>

#include "orvelcs/cli/command.h"
#include "orvelcs/cli/failure.h"

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

/// Digits with a point at most; nothing for all else.
std::optional<double> decimalNumber(const std::string& text)
{
    double number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number, std::chars_format::fixed);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

} // namespace

void addWaitOption(CLI::App& program, WaitOption& wait)
{
    wait.option = addArgument(program, "--wait SECONDS", wait.seconds,
                              "how long to wait for another process; 10 without it, 0 is not at all");
}

void applyWaitOption(const WaitOption& wait)
{
    if (wait.option->count() == 0)
        return;
    const std::optional<double> seconds = decimalNumber(wait.seconds);
    if (!seconds || !(*seconds >= 0 && *seconds <= kMostSeconds)) // also false for what is no number
        throw wrongUsage("--wait",
                         fmt::format("{} is not a number of seconds from 0 to {}", wait.seconds, kMostSeconds));
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
    return wait;
}

std::string stillHeldMessage()
{
    return fmt::format("another process holds it, after {} s still; try again, or wait longer with --wait SECONDS",
                       secondsToWait());
}

} // namespace Orvelcs
