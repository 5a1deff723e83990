// The numbers of areas on a map.
#pragma once

#include <vector>

#include "orvelcs/output/map/label_placement.h"
#include "orvelcs/output/map/mapped_system.h"

namespace Orvelcs {

/// Of the numbers on a map.
double numberFontSize(std::size_t areaCount);
/// The box of a number.
PageBox numberBox(int number, double fontSize);

struct AreaLabel {
    PlacedLabel label;
    MapPoint anchor;     // in the area
    bool isTiny = false; // the area is so small on the map that a dot has to show it
};

/// Places a number for each area, in their order.
std::vector<AreaLabel> labelAreas(const std::vector<MappedArea>& areas, const MapView& view,
                                  std::vector<PageBox> obstacles);

} // namespace Orvelcs
