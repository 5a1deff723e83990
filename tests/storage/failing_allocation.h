// Makes one chosen allocation of this program fail: the n-th of a certain size.
#pragma once

#include <cstddef>

namespace Tests {

class ScopedFailingAllocation {
public:
    /// `occurrence` 0 fails none and only counts.
    ScopedFailingAllocation(std::size_t size, std::size_t occurrence);
    ScopedFailingAllocation(const ScopedFailingAllocation&) = delete;
    ScopedFailingAllocation& operator=(const ScopedFailingAllocation&) = delete;
    ~ScopedFailingAllocation();

    /// The number of allocations of that size so far.
    std::size_t count() const;
};

} // namespace Tests
