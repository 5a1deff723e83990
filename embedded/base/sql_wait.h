// Waiting for other processes.
#pragma once

#include <chrono>
#include <functional>

#include "platform/export.h"

namespace Embedded {

/// How long a connection waits for another process.
struct SqlWait {
    std::chrono::milliseconds most{10000};
    /// Called again and again while it waits; may be empty.
    std::function<void(std::chrono::milliseconds waited)> waiting;
    std::chrono::steady_clock::time_point began; // of the wait that is going on
};

/// Pauses between two attempts to get what another process holds. `attempt` counts from 0. False when the time is over.
[[nodiscard]] FQCORE_API bool waitOnce(SqlWait& wait, int attempt);

} // namespace Embedded
