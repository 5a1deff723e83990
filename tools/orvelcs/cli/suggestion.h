// The nearest names to a misspelt word.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Orvelcs {

/// The candidates with the smallest edit distance to the word, ignoring case, in the order given. Empty when none is
/// near.
std::vector<std::string> nearest(std::string_view word, const std::vector<std::string>& candidates);

/// "; the nearest is A" or "; the nearest are A, B"; empty without names.
std::string nearestClause(const std::vector<std::string>& names);

} // namespace Orvelcs
