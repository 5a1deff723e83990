// The text literals of C++ sources, for tests that look for names in them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Tests {

/// The values of the literals in order, those of `#include` left out. An escaped backslash is a backslash; other escape
/// sequences are left out. Knows no raw literals.
std::vector<std::string> collectTextLiterals(std::string_view source);

} // namespace Tests
