// How much memory the process has allocated. Every call of malloc and its like is counted, whichever library makes it.
#pragma once

#include <cstddef>

namespace Bench {

/// What is allocated now, as the allocator rounds it.
[[nodiscard]] std::size_t allocatedBytes();

/// The most that was allocated at once since the last resetPeak().
[[nodiscard]] std::size_t peakBytes();
void resetPeak();

/// From now on every long text is memory fresh from the system, as it is in a program that handles one. The allocator
/// would keep some lengths for the next time and not others, and what is measured would depend on that.
void giveLongTextsBack();

} // namespace Bench
