// JSON as drawing files use it: every syntax rule of the format, before anything is known about drawings.
#pragma once

#include <nlohmann/json.hpp>

#include <string_view>

namespace Embedded {

/// Parses the text. Throws DrawingRefusal for a text that is not JSON, that nests deeper than drawing files do, repeats
/// a key in an object, or has a number that is very long or that no double can hold.
nlohmann::json parseJsonDocument(std::string_view text);

} // namespace Embedded
