// Areas between two meridians and two parallels, which may cross the antimeridian.
#pragma once

#include <optional>

#include "platform/export.h"

namespace Embedded {

/// In degrees.
struct GeographicPoint {
    double latitude = 0;
    double longitude = 0;
};

/// In degrees. West is greater than east for an area that crosses the antimeridian. A point has no extent.
struct GeographicBounds {
    double west = 0;
    double south = 0;
    double east = 0;
    double north = 0;

    /// The edges count, and 180 degrees west is 180 degrees east.
    ZSR_API bool contains(const GeographicBounds& other) const;
    /// How many degrees of longitude the area takes, from 0 to 360.
    ZSR_API double longitudinalExtent() const;
    /// The middle, whose longitude is from -180 to 180.
    ZSR_API GeographicPoint middle() const;
};

/// The part that both have, edges included; the wider one where there are two, and nothing where there is none.
ZSR_API std::optional<GeographicBounds> commonBounds(const GeographicBounds& left, const GeographicBounds& right);

} // namespace Embedded
