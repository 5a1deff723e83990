// The heap that stands in for the C runtime's in the test programs: guard bytes around every block, freed memory kept
// back and watched. A misuse ends the process at once, with a report and an exit code of its own.
//
// Not safe for threads; the runtime functions in front of it take the lock.
#pragma once

#include <cstddef>

#include "support/win32/heap/block.h"
#include "support/win32/heap/block_memory.h"
#include "support/win32/heap/block_table.h"

namespace GuardedHeap {

class Heap {
public:
    /// Ends the process when the system gives it no heap.
    void open();
    /// Null when there is no memory.
    [[nodiscard]] std::byte* allocate(std::size_t size, const CallSite& caller);
    /// The live block at that address, or null when the address is not of this heap.
    [[nodiscard]] const Block* live(void* start, const CallSite& caller) const;
    /// Whether the address was one of this heap; the block is checked, filled and kept back for a while.
    [[nodiscard]] bool release(void* start, const CallSite& caller);

    /// Ends the process when any block, live or kept back, is damaged.
    void checkAll() const;
    const BlockTable& blocks() const { return blocks_; }
    /// What large blocks come from.
    void* systemHeap() const { return memory_.systemHeap(); }

private:
    void keepBack(Block& block);
    void letGoOfOldest();
    void prefetchNextOldest() const;

    BlockMemory memory_;
    BlockTable blocks_;
    Block** keptBack_ = nullptr; // a ring
    std::size_t oldest_ = 0;
    std::size_t numberKeptBack_ = 0;
    std::size_t bytesKeptBack_ = 0;
};

} // namespace GuardedHeap
