// Areas between two meridians and two parallels, which may cross the antimeridian.
#pragma once

#include "platform/export.h"

namespace Embedded {

/// In degrees. West is greater than east for an area that crosses the antimeridian. A point has no extent.
struct GeographicBounds {
    double west = 0;
    double south = 0;
    double east = 0;
    double north = 0;

    /// The edges count, and 180 degrees west is 180 degrees east.
    ZSR_API bool contains(const GeographicBounds& other) const;
};

} // namespace Embedded
