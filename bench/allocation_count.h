// Counts the memory that the process has allocated, by malloc and similar functions, in all libraries.
#pragma once

#include <cstddef>

namespace Bench {

/// The memory that is allocated now, as the allocator rounds it.
[[nodiscard]] std::size_t allocatedBytes();

/// The largest amount that was allocated at once since resetPeak().
[[nodiscard]] std::size_t peakBytes();
void resetPeak();

/// Makes the allocator return long texts to the system at once, as if the program handled only one. Otherwise it would
/// keep some lengths and not others, and the figures would depend on that.
void returnLongTextsToSystem();

} // namespace Bench
