// Chooses systems by their areas of use.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "embedded/spatial_reference/catalog/catalog_areas.h"

namespace Orvelcs {

/// A system with its area of use. Of several areas it is the first that the filter accepts.
struct PlacedSystem {
    Embedded::CatalogEntry entry;
    std::shared_ptr<const Embedded::CatalogArea> area; // null where the catalog says nothing
};

/// What is asked of an area of use. Without any of it every system is accepted.
struct PlaceFilter {
    std::optional<Embedded::GeographicBounds> at;   // the area contains this point
    std::optional<Embedded::GeographicBounds> bbox; // the area contains all of this one
    std::wstring words;                             // the name of the area has these words, or words that begin so

    bool isEmpty() const { return !at && !bbox && words.empty(); }
    bool accepts(const Embedded::CatalogArea& area) const;
};

/// The systems that the filter accepts, in the order of the entries. Throws Failure when the catalog cannot be read,
/// and when the filter accepts none of them.
std::vector<PlacedSystem> placedSystems(const std::vector<Embedded::CatalogEntry>& entries, const PlaceFilter& filter);

} // namespace Orvelcs
