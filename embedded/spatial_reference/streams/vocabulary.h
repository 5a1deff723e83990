// Texts and subtrees that many definitions have in common. Each has a number that never changes.
#pragma once

#include <cstddef>
#include <optional>

#include "embedded/spatial_reference/projjson/projjson.h"

namespace Embedded {

/// The number of the entry that equals the value; nothing when no entry does.
std::optional<std::size_t> vocabularyNumber(const Projjson& value);

/// The entry of the number; null when the vocabulary has no such entry.
const Projjson* vocabularyEntry(std::size_t number);

} // namespace Embedded
