// Waiting for a lock that another process holds.
#pragma once

#include <chrono>
#include <functional>

#include "platform/export.h"

namespace Embedded {

/// How long to wait, whom to tell, and whom to ask.
class FQCORE_API LockWait {
public:
    std::chrono::milliseconds longest{10000};
    /// Called before each pause; may be empty.
    std::function<void(std::chrono::milliseconds waited)> onPause;
    /// Asked before each pause; ends the wait as if the time were over. May be empty.
    std::function<bool()> isCancelled;

    /// Pauses between two attempts to get the lock. `attempt` counts from 0, which starts a new wait. Returns false
    /// when the time is over.
    [[nodiscard]] bool pause(int attempt);

private:
    std::chrono::steady_clock::time_point start_;
};

} // namespace Embedded
