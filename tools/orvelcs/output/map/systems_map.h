// The picture of where systems and drawings are: a map of their areas of use, and the list of what the numbers on it
// mean.
#pragma once

#include <string>
#include <vector>

#include "orvelcs/output/map/map_drawing.h"
#include "orvelcs/output/map/mapped_system.h"

namespace Orvelcs {

/// An SVG that stands alone. The systems are numbered; at least one. The same systems give the same bytes.
std::string drawSystemsMap(const std::vector<MappedSystem>& systems);

/// The parts of the picture, for a page with a list of its own.
std::string systemsMapTitle(const std::vector<MappedSystem>& systems);
std::string systemsMapStyle();
GeographicBounds systemsMapExtent(const std::vector<MappedArea>& areas);

/// Whether the number of an area is a link from "#area-N" to "#system-N".
enum class AreaNumbers { plain, links };
void drawMappedAreas(SvgWriter& svg, const MapDrawing& map, const std::vector<MappedArea>& areas, AreaNumbers numbers);

} // namespace Orvelcs
