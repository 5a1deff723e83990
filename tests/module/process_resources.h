// The memory and handles that the system counts for this process.
#pragma once

#include <cstddef>

namespace Tests {

struct ProcessResources {
    /// Memory.
    std::size_t bytes = 0;
    /// Open files, and whatever else the system counts with them.
    std::size_t handles = 0;
};

ProcessResources processResources();

} // namespace Tests
