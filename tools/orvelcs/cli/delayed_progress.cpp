#include "orvelcs/cli/delayed_progress.h"

#include <chrono>
#include <cstdio>
#include <utility>

#include <fmt/format.h>

#include "orvelcs/cli/process.h"

namespace Orvelcs {

DelayedProgress::DelayedProgress(const Output& output, std::string what) : output_(output), what_(std::move(what))
{
    if (!output.isQuiet() && isTerminal(stderr))
        thread_ = std::thread([this] { showUntilDone(); });
}

DelayedProgress::~DelayedProgress()
{
    if (!thread_.joinable())
        return;
    {
        const std::lock_guard lock(mutex_);
        isDone_ = true;
    }
    changed_.notify_one();
    thread_.join();
}

void DelayedProgress::showUntilDone()
{
    constexpr std::chrono::duration<double> kInterval{0.5};
    std::unique_lock lock(mutex_);
    for (int count = 1; !changed_.wait_for(lock, kInterval, [this] { return isDone_; }); ++count)
        output_.progress(fmt::format("[{:.1f} s]", count * kInterval.count()), what_);
}

} // namespace Orvelcs
