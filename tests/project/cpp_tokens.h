// Splits C++ text into tokens, for tests that look for names.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Tests {

/// The identifiers, numbers and punctuation in order. `::` and `->` are one token each. Comments and text literals have
/// no tokens. Of a preprocessor line only `#define` is kept, as "#define" and the name.
std::vector<std::string> tokenize(std::string_view text);

bool isIdentifier(std::string_view token);

} // namespace Tests
