// Columns of a terminal that a text takes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Orvelcs {

/// Letters of East Asia take two columns, combining marks none.
std::size_t displayWidth(std::string_view utf8);

/// The text, cut to so many columns if it takes more, with "…" at its end.
std::string truncated(const std::string& utf8, std::size_t mostColumns);

} // namespace Orvelcs
