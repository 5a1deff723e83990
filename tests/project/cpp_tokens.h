// C++ text cut into tokens, for tests that look for names in it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Tests {

/// Identifiers, numbers and punctuation in order; `::` and `->` are one token each. Comments and literals of text have
/// none. Of the preprocessor's lines a `#define` alone is kept: as "#define" and the name.
std::vector<std::string> tokensOf(std::string_view text);

bool isIdentifier(std::string_view token);

} // namespace Tests
