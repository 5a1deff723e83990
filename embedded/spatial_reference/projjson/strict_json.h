// JSON from outside, read strictly: bounded in depth, without repeated keys, without NUL characters.
#pragma once

#include <string_view>

#include "embedded/base/error.h"
#include "embedded/spatial_reference/projjson/projjson.h"

namespace Embedded {

/// Text that is nested more deeply is refused.
inline constexpr int kDeepestJson = 32;

/// The value of a text that is one JSON value within these bounds. The Error has statusUnreadable and says what is
/// wrong.
Expected<Projjson> parseStrictJson(std::string_view utf8);

} // namespace Embedded
