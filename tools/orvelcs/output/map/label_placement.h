// Finds places for labels on a map, so that none covers another.
#pragma once

#include <vector>

#include "orvelcs/output/map/map_view.h"

namespace Orvelcs {

/// A label that is wanted. The points are its possible middles, the best first: where the label says what it is about
/// without a line that leads there.
struct WantedLabel {
    std::vector<MapPoint> points;
    double width = 0;
    double height = 0;
};

struct PlacedLabel {
    PageBox box;
    bool needsLeader = false; // from the first of its points, near which there was no room
};

/// Places the labels in the order given, inside the frame and away from the obstacles and from each other. Throws
/// Failure when the frame has no room for one.
std::vector<PlacedLabel> placeLabels(const std::vector<WantedLabel>& labels, const PageBox& frame,
                                     std::vector<PageBox> obstacles);

} // namespace Orvelcs
