// The distances between two transformations at the nodes of a grid of meridians and parallels.
#pragma once

#include <cstddef>
#include <vector>

#include "orvelcs/output/map/map_extent.h"

namespace Orvelcs {

/// The nodes in between lie at round degrees, so that their coordinates are short.
struct NodeGrid {
    std::vector<double> longitudes; // from west to east; beyond 180 where the grid crosses the antimeridian
    std::vector<double> latitudes;  // from south to north

    std::size_t columns() const { return longitudes.size(); }
    std::size_t rows() const { return latitudes.size(); }
    std::size_t size() const { return columns() * rows(); }
    /// Of all nodes, row by row from the south, with longitudes from -180 to 180.
    std::vector<Embedded::GeographicPoint> points() const;
};

/// Covers the area with the finest grid of at most so many nodes.
NodeGrid makeNodeGrid(const GeographicBounds& area, std::size_t mostNodes);

struct DistanceGrid {
    NodeGrid nodes;
    std::vector<double> metres; // of each node; not a number where there is no distance

    double at(std::size_t row, std::size_t column) const { return metres[row * nodes.columns() + column]; }
};

} // namespace Orvelcs
