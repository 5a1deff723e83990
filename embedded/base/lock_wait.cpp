#include "embedded/base/lock_wait.h"

#include <algorithm>
#include <thread>

namespace Embedded {

bool LockWait::pause(int attempt)
{
    using std::chrono::milliseconds;
    constexpr milliseconds kLongestPause{50};
    const auto now = std::chrono::steady_clock::now();
    if (attempt == 0)
        start_ = now;
    const auto waited = std::chrono::duration_cast<milliseconds>(now - start_);
    if (waited >= longest || (isCancelled && isCancelled()))
        return false;
    if (onPause)
        onPause(waited);
    std::this_thread::sleep_for(std::min({milliseconds(1 + attempt), kLongestPause, longest - waited}));
    return true;
}

} // namespace Embedded
