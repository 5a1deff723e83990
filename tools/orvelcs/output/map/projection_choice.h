// The projection of a map, by the part of the Earth that it shows.
#pragma once

#include <optional>
#include <string>

#include "orvelcs/output/map/map_extent.h"

namespace Orvelcs {

struct ProjectionChoice {
    std::string definition; // for PROJ
    std::string name;       // "Equal Earth"
    MapPoint centre;        // longitude and latitude
    double radius = 0;      // the angle from the centre to the farthest place of the extent
    bool isAzimuthal = false;
    bool showsWorld = false; // the map is all of the Earth, whatever the extent
};

/// Equal Earth for the world; the equal-area azimuthal projection for a pole, a hemisphere and a continent; a conic one
/// for what is smaller and lies neither at the equator nor at a pole, which is conformal for a country.
ProjectionChoice chooseProjection(const GeographicBounds& extent);

} // namespace Orvelcs
