// Finds preprocessor conditions on the operating system.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace Tests {

/// The numbers of the lines, from 1, where a condition starts that names an operating system's macro or header.
std::vector<std::size_t> findOperatingSystemConditions(std::string_view text);

} // namespace Tests
