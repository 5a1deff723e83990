// Lines and rings as the data of an SVG path.
#pragma once

#include <string>
#include <vector>

#include "orvelcs/output/map/plane_clipping.h"

namespace Orvelcs {

enum class PathEnd { open, closed };

/// In tenths of a unit. Each line begins anew, and goes on in differences, which are short.
std::string svgPath(const std::vector<PlaneLine>& lines, PathEnd end);

} // namespace Orvelcs
