// Finds out which code is meant by one that the catalog does not have.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "embedded/spatial_reference/catalog/catalog.h"

namespace Embedded {

/// The nearest codes of the catalog, the best first, at most `limit`: the authority may be missing or misspelt, digits
/// may be swapped or wrong. When no code is near, the entries in use whose names have every word of the text, or nearly
/// so.
ZSR_API std::vector<CatalogEntry> suggestCodes(std::wstring_view code, std::size_t limit);

} // namespace Embedded
