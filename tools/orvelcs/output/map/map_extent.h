// The part of the Earth that a map is to show.
#pragma once

#include <vector>

#include "embedded/spatial_reference/catalog/geographic_bounds.h"
#include "orvelcs/output/map/plane_clipping.h"

namespace Orvelcs {

using Embedded::GeographicBounds;

/// All of the Earth.
inline constexpr GeographicBounds kWholeEarth{.west = -180, .south = -90, .east = 180, .north = 90};

/// Returns whether the place lies in the area. The longitude may be beyond 180 degrees.
bool containsPlace(const GeographicBounds& bounds, double latitude, double longitude);

/// The middle of the area, as a longitude from -180 to 180 and a latitude.
MapPoint middleOf(const GeographicBounds& bounds);

/// The smallest area that contains all of these, which crosses the antimeridian where that makes it smaller; the whole
/// Earth for none.
GeographicBounds commonExtent(const std::vector<GeographicBounds>& areas);

/// The area as a ring of longitudes and latitudes. East is greater than west, beyond 180 where the area crosses the
/// antimeridian.
PlaneLine ringOf(const GeographicBounds& bounds);

} // namespace Orvelcs
