// How much this process has allocated and not given back.
#pragma once

#include <cstddef>

namespace Tests {

[[nodiscard]] std::size_t allocatedBytes();

} // namespace Tests
