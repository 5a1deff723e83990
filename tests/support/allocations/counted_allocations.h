// Counts the allocations of a test program. The program links the object library counted_allocations, which replaces
// the allocation functions.
#pragma once

namespace Tests {

/// The number of blocks that are allocated now.
long allocatedBlocks();

/// Makes the next allocation in the scope fail.
class ScopedShortage {
public:
    ScopedShortage();
    ~ScopedShortage();
    ScopedShortage(const ScopedShortage&) = delete;
    ScopedShortage& operator=(const ScopedShortage&) = delete;
};

} // namespace Tests
