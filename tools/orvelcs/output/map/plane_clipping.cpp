#include "orvelcs/output/map/plane_clipping.h"

#include <algorithm>
#include <array>
#include <limits>

namespace Orvelcs {
namespace {

/// A side of a rectangle: the points with `distance` 0 or more lie inside.
struct HalfPlane {
    double MapPoint::*coordinate;
    double edge;
    double sign;

    double distance(const MapPoint& point) const { return sign * (point.*coordinate - edge); }

    /// The point of the segment on the edge.
    MapPoint crossing(const MapPoint& from, const MapPoint& to) const
    {
        const double before = distance(from);
        const double share = before / (before - distance(to));
        MapPoint point{from.x + (to.x - from.x) * share, from.y + (to.y - from.y) * share};
        point.*coordinate = edge;
        return point;
    }
};

std::array<HalfPlane, 4> sidesOf(const PlaneRectangle& rectangle)
{
    return {{{&MapPoint::x, rectangle.left, 1},
             {&MapPoint::x, rectangle.right, -1},
             {&MapPoint::y, rectangle.bottom, 1},
             {&MapPoint::y, rectangle.top, -1}}};
}

PlaneLine clipRingAt(const HalfPlane& side, const PlaneLine& ring)
{
    PlaneLine kept;
    kept.reserve(ring.size() + 2);
    for (std::size_t index = 0; index < ring.size(); ++index) {
        const MapPoint& from = ring[index];
        const MapPoint& to = ring[index + 1 < ring.size() ? index + 1 : 0];
        const double before = side.distance(from);
        const double after = side.distance(to);
        if (before >= 0)
            kept.push_back(from);
        if ((before > 0 && after < 0) || (before < 0 && after > 0))
            kept.push_back(side.crossing(from, to));
    }
    return kept;
}

/// Shortens the segment to its part inside. Returns false where nothing of it is.
bool clipSegment(const std::array<HalfPlane, 4>& sides, MapPoint& from, MapPoint& to)
{
    for (const HalfPlane& side : sides) {
        const bool keepsFrom = side.distance(from) >= 0;
        const bool keepsTo = side.distance(to) >= 0;
        if (!keepsFrom && !keepsTo)
            return false;
        if (!keepsFrom)
            from = side.crossing(from, to);
        else if (!keepsTo)
            to = side.crossing(from, to);
    }
    return true;
}

} // namespace

bool PlaneRectangle::contains(const MapPoint& point) const
{
    return point.x >= left && point.x <= right && point.y >= bottom && point.y <= top;
}

bool PlaneRectangle::meets(const PlaneRectangle& other) const
{
    return left <= other.right && other.left <= right && bottom <= other.top && other.bottom <= top;
}

PlaneRectangle PlaneRectangle::grownBy(double x, double y) const
{
    return {left - x, bottom - y, right + x, top + y};
}

PlaneRectangle boundsOf(const PlaneLine& points)
{
    constexpr double kInfinite = std::numeric_limits<double>::infinity();
    PlaneRectangle bounds{kInfinite, kInfinite, -kInfinite, -kInfinite};
    for (const auto& [x, y] : points) {
        bounds.left = std::min(bounds.left, x);
        bounds.right = std::max(bounds.right, x);
        bounds.bottom = std::min(bounds.bottom, y);
        bounds.top = std::max(bounds.top, y);
    }
    return bounds;
}

PlaneLine clipRing(PlaneLine ring, const PlaneRectangle& rectangle)
{
    for (const HalfPlane& side : sidesOf(rectangle))
        ring = clipRingAt(side, ring);
    return ring;
}

std::vector<PlaneLine> clipLine(const PlaneLine& line, const PlaneRectangle& rectangle)
{
    const auto sides = sidesOf(rectangle);
    std::vector<PlaneLine> parts;
    bool continues = false; // the last part goes on at the next segment
    for (std::size_t index = 1; index < line.size(); ++index) {
        MapPoint from = line[index - 1];
        MapPoint to = line[index];
        if (!clipSegment(sides, from, to)) {
            continues = false;
            continue;
        }
        if (!continues)
            parts.push_back({from});
        parts.back().push_back(to);
        continues = to == line[index];
    }
    return parts;
}

} // namespace Orvelcs
