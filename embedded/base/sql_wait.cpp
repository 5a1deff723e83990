#include "embedded/base/sql_wait.h"

#include <algorithm>
#include <thread>

namespace Embedded {

bool waitOnce(SqlWait& wait, int attempt)
{
    using std::chrono::milliseconds;
    constexpr milliseconds kLongestPause{50};
    const auto now = std::chrono::steady_clock::now();
    if (attempt == 0)
        wait.began = now;
    const auto waited = std::chrono::duration_cast<milliseconds>(now - wait.began);
    if (waited >= wait.most)
        return false;
    if (wait.waiting)
        wait.waiting(waited);
    std::this_thread::sleep_for(std::min({milliseconds(1 + attempt), kLongestPause, wait.most - waited}));
    return true;
}

} // namespace Embedded
