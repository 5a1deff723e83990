// The memory that this process has allocated and not freed.
#pragma once

#include <cstddef>

namespace Tests {

[[nodiscard]] std::size_t allocatedBytes();

} // namespace Tests
