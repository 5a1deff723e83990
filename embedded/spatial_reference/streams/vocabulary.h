// Texts and subtrees that documents have in common, each with a number that never changes.
#pragma once

#include <cstddef>
#include <optional>

#include "embedded/spatial_reference/projjson/projjson.h"

namespace Embedded {

/// The entry's number, or nothing.
std::optional<std::size_t> vocabularyNumberOf(const Projjson& value);

/// The entry, or null for a number that no entry has.
const Projjson* vocabularyEntry(std::size_t number);

} // namespace Embedded
