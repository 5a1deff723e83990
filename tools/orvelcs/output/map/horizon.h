// The circle up to which an azimuthal map is drawn. Behind it the map is distorted beyond use, and the place opposite
// to the centre is a circle.
#pragma once

#include <vector>

#include "orvelcs/output/map/plane_clipping.h"

namespace Orvelcs {

class Horizon {
public:
    /// The angle from the centre is in degrees, and less than 180.
    Horizon(const MapPoint& centre, double angle) : centre_(centre), angle_(angle) {}

    bool isPast(const MapPoint& place) const;
    /// The ring with what lies past the horizon moved onto it, in the same direction from the centre. That fills what
    /// the ring fills in front of the horizon, unless the place opposite to the centre lies inside the ring.
    PlaneLine moveOnto(const PlaneLine& ring) const;
    /// All of the horizon, as a ring.
    PlaneLine circle() const;
    /// The parts of the line in front of the horizon.
    std::vector<PlaneLine> cut(const PlaneLine& line) const;

private:
    void appendArc(double from, double to, PlaneLine& ring) const;
    MapPoint crossing(const MapPoint& inside, const MapPoint& outside) const;

    MapPoint centre_;
    double angle_;
};

} // namespace Orvelcs
