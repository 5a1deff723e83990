// The search for blocks that nothing leads to any more.
#pragma once

#include <cstddef>

#include "support/win32/heap/guarded_heap.h"

namespace GuardedHeap {

struct Leaks {
    std::size_t blocks = 0;
    std::size_t bytes = 0;
};

/// Follows every word that looks like an address, from the libraries' writable data, the threads' stacks (this one's
/// above `stackStart`) and slots, and all memory of other heaps, through the live blocks, and reports those that were
/// not met.
[[nodiscard]] Leaks reportLeaks(const Heap& heap, const void* stackStart);

} // namespace GuardedHeap
