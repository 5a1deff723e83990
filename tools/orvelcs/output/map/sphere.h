// Angles between places on a sphere, in degrees. A place is its longitude and its latitude.
#pragma once

#include "embedded/base/degrees.h"
#include "embedded/spatial_reference/operations/map_projection.h"

namespace Orvelcs {

inline constexpr double kCircle = 360;
inline constexpr double kHalfCircle = 180;
inline constexpr double kPole = 90;
/// Of the sphere that maps are drawn of.
inline constexpr double kEarthRadiusInMetres = 6371008.8;

/// The same meridian at most 180 degrees from `centre`.
double wrapLongitude(double longitude, double centre);

/// The angle that two places are apart.
double angleBetween(const Embedded::MapPoint& from, const Embedded::MapPoint& to);

/// The direction from one place to the other, clockwise from the north, from -180 to 180.
double azimuthBetween(const Embedded::MapPoint& from, const Embedded::MapPoint& to);

/// The place at an angle from another, in a direction.
Embedded::MapPoint placeAt(const Embedded::MapPoint& from, double azimuth, double angle);

} // namespace Orvelcs
