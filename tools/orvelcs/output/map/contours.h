// Where the distances of a grid reach a level.
#pragma once

#include <vector>

#include "orvelcs/output/map/distance_grid.h"

namespace Orvelcs {

struct Contour {
    /// Around what reaches the level, in longitudes and latitudes, to be filled by the even-odd rule. They end
    /// at the last nodes that have a distance.
    std::vector<PlaneLine> rings;
    /// The parts of the rings along which the distance is the level.
    std::vector<PlaneLine> lines;
};

/// Distances between the nodes are interpolated along the lines of the grid.
Contour traceContour(const DistanceGrid& grid, double level);

} // namespace Orvelcs
