// Counts what the module, and what the host below it, allocate with `new`, and makes one of those allocations fail.
#pragma once

#include <array>
#include <cstddef>

namespace Tests {

enum class Allocator : std::size_t { module, host, other };

/// Whose code made the allocation, a part of which is at the address. The standard library's code is its caller's.
Allocator allocatorAt(const void* caller);

/// From its making to its end, in which all that this program itself runs is the module.
class ScopedAllocations {
public:
    /// `failing` is counted from 1 among those of `whose`; 0 fails none.
    ScopedAllocations(Allocator whose, std::size_t failing);
    ScopedAllocations(const ScopedAllocations&) = delete;
    ScopedAllocations& operator=(const ScopedAllocations&) = delete;
    ~ScopedAllocations();

    /// Since the last one was made.
    static std::size_t count(Allocator whose);
};

} // namespace Tests
