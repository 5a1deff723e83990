// Whole numbers at the nodes of a grid in few characters, for a script of a page.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace Orvelcs {

/// Each number is stored as its difference from west + south - southwest of it, or from the only neighbour in the first
/// row and column: in groups of seven bits, the lowest first, with the sign in the lowest bit and the eighth bit set in
/// all groups but the last. All of that is in base 64.
std::string encodeField(const std::vector<std::int64_t>& numbers, std::size_t columns);

} // namespace Orvelcs
