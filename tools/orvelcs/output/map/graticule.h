// The meridians and parallels of a map, and the labels at their ends.
#pragma once

#include <string>
#include <vector>

#include "orvelcs/output/map/map_view.h"

namespace Orvelcs {

struct GraticuleLabel {
    std::string text;
    MapPoint point;     // of the text's baseline
    const char* anchor; // "start", "middle" or "end" of the text is at the point
    PageBox box;
    bool isInside = false; // on the map, where other labels must leave room for it
};

struct Graticule {
    std::vector<PlaneLine> lines; // of the page
    std::vector<GraticuleLabel> labels;
};

inline constexpr double kGraticuleFontSize = 10;

/// "12.5°W", "0°", "30°S".
std::string longitudeText(double longitude);
std::string latitudeText(double latitude);

/// Lines at round degrees. The labels stand outside of the frame, except on a map around a pole; none meets another.
Graticule makeGraticule(const MapView& view);

} // namespace Orvelcs
