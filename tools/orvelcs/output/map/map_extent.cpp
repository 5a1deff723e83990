#include "orvelcs/output/map/map_extent.h"

#include <algorithm>
#include <cmath>

#include "orvelcs/output/map/sphere.h"

namespace Orvelcs {
namespace {

/// From a meridian eastward to another one.
struct Arc {
    double west;
    double east;
};

/// The arc that is left of the circle when its longest gap is left out.
Arc commonArc(std::vector<Arc> arcs)
{
    std::ranges::sort(arcs, {}, &Arc::west);
    double reached = arcs.front().west;
    Arc gap{0, 0};
    for (const Arc& arc : arcs) {
        if (arc.west - reached > gap.east - gap.west)
            gap = {reached, arc.west};
        reached = std::max(reached, arc.east);
    }
    const double closing = arcs.front().west + kCircle;
    if (closing - reached >= gap.east - gap.west)
        return {arcs.front().west, reached};
    return {gap.east, std::max(reached, gap.west + kCircle)};
}

} // namespace

bool containsPlace(const GeographicBounds& bounds, double latitude, double longitude)
{
    if (latitude < bounds.south || latitude > bounds.north)
        return false;
    const double eastward = std::fmod(longitude - bounds.west, kCircle);
    return (eastward < 0 ? eastward + kCircle : eastward) <= bounds.longitudinalExtent();
}

MapPoint middleOf(const GeographicBounds& bounds)
{
    const Embedded::GeographicPoint middle = bounds.middle();
    return {middle.longitude, middle.latitude};
}

GeographicBounds commonExtent(const std::vector<GeographicBounds>& areas)
{
    if (areas.empty())
        return kWholeEarth;
    std::vector<Arc> arcs;
    GeographicBounds common = areas.front();
    for (const GeographicBounds& area : areas) {
        const double west = wrapLongitude(area.west, 0);
        arcs.push_back({west, west + area.longitudinalExtent()});
        common.south = std::min(common.south, area.south);
        common.north = std::max(common.north, area.north);
    }
    const Arc arc = commonArc(std::move(arcs));
    if (arc.east - arc.west >= kCircle) {
        common.west = kWholeEarth.west;
        common.east = kWholeEarth.east;
    } else {
        common.west = wrapLongitude(arc.west, 0);
        common.east = wrapLongitude(arc.east, 0);
    }
    return common;
}

PlaneLine ringOf(const GeographicBounds& bounds)
{
    const double east = bounds.west + bounds.longitudinalExtent();
    return {{bounds.west, bounds.south}, {east, bounds.south}, {east, bounds.north}, {bounds.west, bounds.north}};
}

} // namespace Orvelcs
