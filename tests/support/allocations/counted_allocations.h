// The allocation functions of a test program that counts what is allocated. A program gets them by linking the object
// library counted_allocations.
#pragma once

namespace Tests {

/// How many blocks are allocated now.
long allocatedBlocks();

/// The next allocation fails, if there is one before the end of the scope.
class ScopedShortage {
public:
    ScopedShortage();
    ~ScopedShortage();
    ScopedShortage(const ScopedShortage&) = delete;
    ScopedShortage& operator=(const ScopedShortage&) = delete;
};

} // namespace Tests
