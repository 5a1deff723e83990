// JSON from outside, read strictly: bounded in depth, without repeated keys, without NUL characters. It is a library of
// its own, so that whatever else uses the base room needs no JSON.
#pragma once

#include <cstddef>
#include <string_view>

#include <nlohmann/json.hpp>

#include "embedded/base/error.h"

namespace Embedded {

/// Returns the value of a text that is one JSON value in UTF-8, with arrays and objects nested at most `mostLevels`
/// deep. The Error has the status 0 and the place in the value, such as "[1].name", and says what is wrong.
Expected<nlohmann::ordered_json> parseStrictJson(std::string_view utf8, std::size_t mostLevels);

} // namespace Embedded
