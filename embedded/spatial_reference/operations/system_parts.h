// The horizontal and the vertical part of a coordinate reference system.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "embedded/spatial_reference/operations/coordinate_transformer.h"
#include "embedded/spatial_reference/projjson/proj_context.h"

namespace Embedded {

struct SystemParts {
    ProjObject whole;
    ProjObject horizontal; // the system itself unless it is compound; null for a vertical system
    ProjObject datum;      // of the horizontal part; null for a vertical system
    std::string vertical;  // the code of the height system; empty when there is none

    bool isHorizontal() const { return horizontal != nullptr; }
    bool isGeocentric() const { return horizontal && proj_get_type(horizontal.get()) == PJ_TYPE_GEOCENTRIC_CRS; }
    /// Returns whether the coordinates have an ellipsoidal height.
    bool hasEllipsoidalHeight() const;
};

SystemParts splitSystem(ProjObject system);
/// The parts of a system of the catalog. Throws ErrorException for one that is unknown or not referenced to the Earth.
SystemParts loadSystemParts(std::wstring_view code);

/// The parts of any system. One that the catalog has in the same way is that of the catalog, which also has an area of
/// use. Throws ErrorException for one that is not referenced to the Earth.
SystemParts systemParts(const Zentara::Infrastructure::SpatialReference::CoordinateReferenceSystemDefinition& system);

SystemAxes systemAxes(const SystemParts& system);

/// The code and the name, such as "EPSG:4275 (NTF)".
std::string describeObject(const PJ* object);

/// Returns whether the datums are the same, even if they have codes of different authorities. Throws ErrorException
/// when the catalog cannot be read.
bool isSameDatum(const PJ* left, const PJ* right);

} // namespace Embedded
