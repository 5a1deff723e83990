// The geographic system below a system: positions on its ellipsoid in degrees.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include "embedded/spatial_reference/catalog/geographic_bounds.h"
#include "embedded/spatial_reference/operations/system_parts.h"

namespace Embedded {

/// Semi-major axis in metres, and flattening.
struct EllipsoidShape {
    double semiMajorAxis = 0;
    double flattening = 0;
};

class GeographicSystem {
public:
    /// Throws ErrorException for a vertical system, and for one without a geographic system.
    explicit GeographicSystem(const SystemParts& system);

    /// The geographic system, with the height system of the system that it was made from.
    const SystemParts& parts() const { return parts_; }
    const EllipsoidShape& ellipsoid() const { return ellipsoid_; }

    /// The point, in degrees from Greenwich, as the system's own axes and units have it, at height 0.
    PJ_COORD coordinate(const GeographicPoint& point) const;
    /// The reverse. Not a number for a coordinate that PROJ could not transform.
    GeographicPoint point(const PJ_COORD& coordinate) const;

private:
    /// One of the first two axes: which angle it is, and how many degrees its unit is. Negative to the south and west.
    struct Axis {
        bool isLatitude = true;
        double degrees = 1;
    };

    void readAxes();

    SystemParts parts_;
    std::array<Axis, 2> axes_;
    double primeMeridianInDegrees_ = 0;
    EllipsoidShape ellipsoid_;
};

} // namespace Embedded
