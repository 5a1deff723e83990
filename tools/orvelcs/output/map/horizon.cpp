#include "orvelcs/output/map/horizon.h"

#include <cmath>
#include <optional>

#include "orvelcs/output/map/sphere.h"

namespace Orvelcs {

bool Horizon::isPast(const MapPoint& place) const
{
    return angleBetween(centre_, place) > angle_;
}

/// Adds points of the horizon on the shorter way between two directions.
void Horizon::appendArc(double from, double to, PlaneLine& ring) const
{
    constexpr double kStep = 2;
    const double turn = to - from > kHalfCircle    ? to - from - kCircle
                        : to - from < -kHalfCircle ? to - from + kCircle
                                                   : to - from;
    const int steps = static_cast<int>(std::abs(turn) / kStep);
    for (int step = 1; step <= steps; ++step)
        ring.push_back(placeAt(centre_, from + turn * step / (steps + 1), angle_));
}

PlaneLine Horizon::circle() const
{
    PlaneLine ring;
    for (double azimuth = -kHalfCircle; azimuth < kHalfCircle; ++azimuth)
        ring.push_back(placeAt(centre_, azimuth, angle_));
    return ring;
}

PlaneLine Horizon::moveOnto(const PlaneLine& ring) const
{
    PlaneLine moved;
    moved.reserve(ring.size());
    std::optional<double> previous; // direction of the point before, if it was moved
    if (!ring.empty() && isPast(ring.back()))
        previous = azimuthBetween(centre_, ring.back());
    for (const MapPoint& place : ring) {
        if (!isPast(place)) {
            moved.push_back(place);
            previous.reset();
            continue;
        }
        const double azimuth = azimuthBetween(centre_, place);
        if (previous)
            appendArc(*previous, azimuth, moved);
        moved.push_back(placeAt(centre_, azimuth, angle_));
        previous = azimuth;
    }
    return moved;
}

MapPoint Horizon::crossing(const MapPoint& inside, const MapPoint& outside) const
{
    const double near = angleBetween(centre_, inside);
    const double share = (angle_ - near) / (angleBetween(centre_, outside) - near);
    return {inside.x + (outside.x - inside.x) * share, inside.y + (outside.y - inside.y) * share};
}

std::vector<PlaneLine> Horizon::cut(const PlaneLine& line) const
{
    std::vector<PlaneLine> parts;
    bool wasPast = true;
    for (std::size_t index = 0; index < line.size(); ++index) {
        const bool past = isPast(line[index]);
        if (!past && wasPast) {
            parts.emplace_back();
            if (index > 0)
                parts.back().push_back(crossing(line[index], line[index - 1]));
        }
        if (!past)
            parts.back().push_back(line[index]);
        else if (!wasPast)
            parts.back().push_back(crossing(line[index - 1], line[index]));
        wasPast = past;
    }
    return parts;
}

} // namespace Orvelcs
