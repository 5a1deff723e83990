// The legend below a map of distances.
#pragma once

#include "orvelcs/output/map/comparison_layers.h"
#include "orvelcs/output/map/distance_scale.h"
#include "orvelcs/output/map/map_view.h"
#include "orvelcs/output/map/pictured_comparison.h"
#include "orvelcs/output/svg_writer.h"

namespace Orvelcs {

/// What of the comparison the map shows.
struct ShownOnMap {
    ShownAreas areas;
    bool point = false;
};

/// Draws the scale of colours, the point, and what is to be known of both candidates, from the upper edge of the room
/// down. Returns the height.
double drawComparisonLegend(SvgWriter& svg, const PicturedComparison& comparison, const DistanceScale& scale,
                            const ShownOnMap& shown, const PageBox& room);

/// "49.5°N 2.5°E".
std::string pointText(const Embedded::GeographicPoint& point);
/// "between 0.5 and 12.3 m", or that there is no distance.
std::string rangeText(const DistanceGrid& grid, const DistanceScale& scale);

} // namespace Orvelcs
