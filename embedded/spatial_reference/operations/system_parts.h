// A coordinate reference system as coordinate operations see it: where it lies, and what its heights refer to.
#pragma once

#include <string>
#include <string_view>

#include "embedded/spatial_reference/projjson/proj_context.h"

namespace Embedded {

struct SystemParts {
    ProjObject whole;
    ProjObject horizontal; // the system itself unless it is compound; null for heights alone
    ProjObject datum;      // of the horizontal part; null for heights alone
    std::string vertical;  // the code of the height system of a compound one or of heights alone; empty: none

    bool isHorizontal() const { return horizontal != nullptr; }
    bool isGeocentric() const { return horizontal && proj_get_type(horizontal.get()) == PJ_TYPE_GEOCENTRIC_CRS; }
    /// Whether ellipsoidal heights belong to the coordinates.
    bool hasEllipsoidalHeight() const;
};

SystemParts partsOf(ProjObject system);
/// A system of the catalog by its code; refuses one that is unknown or not referenced to the Earth.
SystemParts partsOfCatalogSystem(std::wstring_view code);

/// "EPSG:4275 (NTF)".
std::string describeObject(const PJ* object);

/// Whether the datums are the same, under whatever authority's code.
bool isSameDatum(const PJ* left, const PJ* right);

} // namespace Embedded
