// JSON from outside: bounded in depth, without duplicate keys.
#pragma once

#include <optional>
#include <string_view>

#include "embedded/spatial_reference/document.h"

namespace Embedded {

/// Deeper texts are refused.
inline constexpr int kDeepestJson = 32;

/// Whether the text is one JSON value within these bounds.
bool isReadableJson(std::string_view utf8);

/// The value, or nothing.
std::optional<Document> readJson(std::string_view utf8);

} // namespace Embedded
