// Looks for systems of the catalog, by their names and by the places where they are used.
#pragma once

#include <cstddef>
#include <limits>
#include <vector>

#include "embedded/spatial_reference/catalog/catalog_search.h"
#include "orvelcs/cli/output.h"
#include "orvelcs/drawing/place_filter.h"

namespace Orvelcs {

struct SystemSearch {
    Embedded::CatalogQuery query; // without a limit
    PlaceFilter place;
    std::size_t limit = std::numeric_limits<std::size_t>::max();
};

/// The systems, the best first. Throws Failure when there is none, with those that may be meant. A search that takes
/// long is shown on a terminal.
std::vector<PlacedSystem> findSystems(const SystemSearch& search, const Output& output);

} // namespace Orvelcs
