// How much two texts differ, to find what a misspelt word means.
#pragma once

#include <cstddef>
#include <string_view>

#include "platform/export.h"

namespace Embedded {

struct EditCosts {
    std::size_t edit = 1; // of each insertion, deletion or replacement
    std::size_t swap = 1; // of each swap of two neighbours
};

/// The lowest cost to turn one text into the other (optimal string alignment). Case counts.
FQCORE_API std::size_t editDistance(std::string_view left, std::string_view right, EditCosts costs);
FQCORE_API std::size_t editDistance(std::wstring_view left, std::wstring_view right, EditCosts costs);

} // namespace Embedded
