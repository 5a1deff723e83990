// Counts what the module and the host allocate with `new`, and makes one of those allocations fail.
#pragma once

#include <array>
#include <cstddef>

namespace Tests {

enum class Allocator : std::size_t { module, host, other };

/// Finds out whose code allocates. `caller` is an address in the code that calls `new`. An allocation by the standard
/// library counts as one by the code that calls the library.
Allocator allocatorAt(const void* caller);

/// Counts for the length of a scope. All code of this program that runs in the scope counts as the module's.
class ScopedAllocations {
public:
    /// Makes allocation number `failing` by `whose` fail, counted from 1; 0 fails none.
    ScopedAllocations(Allocator whose, std::size_t failing);
    ScopedAllocations(const ScopedAllocations&) = delete;
    ScopedAllocations& operator=(const ScopedAllocations&) = delete;
    ~ScopedAllocations();

    /// The allocations since the last scope began.
    static std::size_t count(Allocator whose);
};

} // namespace Tests
