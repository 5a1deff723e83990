// Places on the Earth as options give them.
#pragma once

#include <string>

#include "embedded/spatial_reference/catalog/geographic_bounds.h"

namespace Orvelcs {

/// The place "LAT,LON" that the option has as its value. Throws Failure for wrong usage.
Embedded::GeographicBounds pointArgument(const std::string& option, const std::string& text);

/// The area "W,S,E,N" that the option has as its value; west is greater than east where it crosses the antimeridian.
/// Throws Failure for wrong usage.
Embedded::GeographicBounds boundsArgument(const std::string& option, const std::string& text);

} // namespace Orvelcs
