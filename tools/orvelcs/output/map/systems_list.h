// The list below a map: what its numbers mean.
#pragma once

#include <string>
#include <vector>

#include "orvelcs/output/map/area_labels.h"
#include "orvelcs/output/map/map_view.h"
#include "orvelcs/output/map/mapped_system.h"
#include "orvelcs/output/svg_writer.h"

namespace Orvelcs {

/// Draws the number in its box at a point, in the colours of the area.
void drawNumber(SvgWriter& svg, int number, const PageBox& box, double fontSize, bool isOnMap);

/// The class of the colours of an area.
std::string areaClass(const MappedArea& area);

/// Draws the list into columns of the width of the room, from its upper edge down. Returns the height of the list.
double drawSystemsList(SvgWriter& svg, const std::vector<MappedSystem>& systems, const PageBox& room);

} // namespace Orvelcs
