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

double longitudinalSpan(const GeographicBounds& bounds)
{
    const double span = bounds.east - bounds.west;
    return std::min(span < 0 ? span + kCircle : span, kCircle);
}

bool containsPlace(const GeographicBounds& bounds, double latitude, double longitude)
{
    if (latitude < bounds.south || latitude > bounds.north)
        return false;
    const double eastward = std::fmod(longitude - bounds.west, kCircle);
    return (eastward < 0 ? eastward + kCircle : eastward) <= longitudinalSpan(bounds);
}

MapPoint middleOf(const GeographicBounds& bounds)
{
    return {wrapLongitude(bounds.west + longitudinalSpan(bounds) / 2, 0), (bounds.south + bounds.north) / 2};
}

GeographicBounds commonExtent(const std::vector<GeographicBounds>& areas)
{
    if (areas.empty())
        return kWholeEarth;
    std::vector<Arc> arcs;
    GeographicBounds common = areas.front();
    for (const GeographicBounds& area : areas) {
        const double west = wrapLongitude(area.west, 0);
        arcs.push_back({west, west + longitudinalSpan(area)});
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
    const double east = bounds.west + longitudinalSpan(bounds);
    return {{bounds.west, bounds.south}, {east, bounds.south}, {east, bounds.north}, {bounds.west, bounds.north}};
}

} // namespace Orvelcs
