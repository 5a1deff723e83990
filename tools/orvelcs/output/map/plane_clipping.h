// Cuts lines and rings at the edges of a rectangle.
#pragma once

#include <vector>

#include "embedded/spatial_reference/operations/map_projection.h"

namespace Orvelcs {

using Embedded::MapPoint;

/// The points of a line, or of a ring, whose last point is joined to its first one.
using PlaneLine = std::vector<MapPoint>;

struct PlaneRectangle {
    double left = 0;
    double bottom = 0; // the smallest y
    double right = 0;
    double top = 0;

    double width() const { return right - left; }
    double height() const { return top - bottom; }
    bool contains(const MapPoint& point) const;
    bool meets(const PlaneRectangle& other) const;
    /// The rectangle with something more on each side.
    PlaneRectangle grownBy(double x, double y) const;
};

/// The smallest rectangle around the points; without any, an empty one that meets none.
PlaneRectangle boundsOf(const PlaneLine& points);

/// The part of the ring inside the rectangle; empty when nothing is. Where the ring leaves and returns, it follows the
/// edge. Parts that only touch have their edges twice, which fills nothing.
PlaneLine clipRing(PlaneLine ring, const PlaneRectangle& rectangle);

/// The parts of the line inside the rectangle.
std::vector<PlaneLine> clipLine(const PlaneLine& line, const PlaneRectangle& rectangle);

} // namespace Orvelcs
