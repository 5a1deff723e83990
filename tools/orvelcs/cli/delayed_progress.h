// Shows on a terminal that work goes on which is nearly always done at once.
#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

#include "orvelcs/cli/output.h"

namespace Orvelcs {

/// After half a second shows what is being done and for how long, until the end of the scope: "[0.5 s] searching the
/// catalog". Shows nothing without a terminal, or with --quiet. Nothing else may use the output in this scope.
class DelayedProgress {
public:
    DelayedProgress(const Output& output, std::string what);
    DelayedProgress(const DelayedProgress&) = delete;
    DelayedProgress& operator=(const DelayedProgress&) = delete;
    ~DelayedProgress();

private:
    void showUntilDone();

    const Output& output_;
    std::string what_;
    std::mutex mutex_;
    std::condition_variable changed_;
    bool isDone_ = false;
    std::thread thread_; // none where nothing is shown
};

} // namespace Orvelcs
