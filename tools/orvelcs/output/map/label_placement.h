// Finds places for labels on a map, so that none covers another.
#pragma once

#include <vector>

#include "orvelcs/output/map/map_view.h"

namespace Orvelcs {

/// A label that is wanted.
struct WantedLabel {
    MapPoint anchor;              // what it is about
    std::vector<MapPoint> points; // where its middle may be without a line that leads to the anchor, the best first
    double width = 0;
    double height = 0;
};

struct PlacedLabel {
    PageBox box;
    bool needsLeader = false; // it lies beside its anchor, on none of its points
};

/// Places the labels in the order given, inside the frame and away from the obstacles and from each other. Throws
/// Failure when the frame has no room for one.
std::vector<PlacedLabel> placeLabels(const std::vector<WantedLabel>& labels, const PageBox& frame,
                                     std::vector<PageBox> obstacles);

} // namespace Orvelcs
