// What the system says that this process holds.
#pragma once

#include <cstddef>

namespace Tests {

struct ProcessResources {
    /// Of memory.
    std::size_t bytes = 0;
    /// Open files and whatever else the system counts with them.
    std::size_t handles = 0;
};

ProcessResources processResources();

} // namespace Tests
