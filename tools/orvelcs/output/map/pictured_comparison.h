// What the pictures of a comparison show: two transformations, and how far apart they put places.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "orvelcs/output/map/distance_grid.h"

namespace Orvelcs {

struct PicturedCandidate {
    std::size_t number = 0; // in the ranking
    std::string code;       // empty for a composition of PROJ's own
    std::string name;
    std::string accuracy; // "1 m", or that it is unknown
    std::string area;     // of use; empty where it is not known
    std::optional<GeographicBounds> bounds;
    std::string reason; // why it cannot be used; empty where it can

    /// "EPSG:1612", or what stands in the place of a code.
    std::string codeText() const { return code.empty() ? "no code" : code; }
};

/// The systems, and the place that the pictures show.
struct PicturedPair {
    std::string source; // its name
    std::string target;
    GeographicBounds extent;
    Embedded::GeographicPoint point;
    bool leavesHeightsOut = false;
    std::vector<PicturedCandidate> lacking; // those that lack a grid and are better than the best that can be used
};

struct PicturedComparison {
    PicturedPair pair;
    PicturedCandidate first;  // A on the picture
    PicturedCandidate second; // B
    std::optional<double> distanceAtPoint;
    DistanceGrid grid;
};

} // namespace Orvelcs
