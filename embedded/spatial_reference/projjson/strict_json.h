// JSON from outside: bounded in depth, without duplicate keys, without NUL characters.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "embedded/spatial_reference/projjson/projjson.h"

namespace Embedded {

/// Deeper texts are refused.
inline constexpr int kDeepestJson = 32;

/// Why the text is not one JSON value within these bounds; nothing for one that is.
std::optional<std::string> faultOfJson(std::string_view utf8);

/// The value, or nothing.
std::optional<Projjson> readJson(std::string_view utf8);

} // namespace Embedded
