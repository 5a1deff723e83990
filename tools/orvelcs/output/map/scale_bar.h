// How long a round distance is on a map.
#pragma once

#include <optional>
#include <string>

#include "orvelcs/output/map/map_view.h"

namespace Orvelcs {

struct ScaleBar {
    double length = 0; // in units of the page
    std::string text;  // "500 km"
};

/// Nothing where the scale differs too much within the frame.
std::optional<ScaleBar> makeScaleBar(const MapView& view);

} // namespace Orvelcs
