// The areas of use of many systems, which the catalog's list leaves out.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "embedded/spatial_reference/catalog/catalog.h"
#include "embedded/spatial_reference/catalog/geographic_bounds.h"

namespace Embedded {

/// Where a system is meant to be used.
struct CatalogArea {
    std::wstring name;
    std::wstring shortName;
    std::optional<GeographicBounds> bounds; // none for what lies nowhere on the Earth
};

/// The areas of one system. A few systems have several; the first is the one that PROJ calls the area of use.
using CatalogAreas = std::vector<std::shared_ptr<const CatalogArea>>; // many systems share an area

/// The areas of each entry, in the order of the entries. The Error has statusCatalogUnavailable or statusOutOfMemory.
ZSR_API Expected<std::vector<CatalogAreas>> areasOfUse(const std::vector<CatalogEntry>& entries);

} // namespace Embedded
