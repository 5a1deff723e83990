// The picture of a comparison: the map of the distances between two transformations, with its legend.
#pragma once

#include <string>

#include "orvelcs/output/map/pictured_comparison.h"

namespace Orvelcs {

/// Draws the picture as an SVG that stands alone. Throws Failure when the projection cannot be made.
std::string drawComparisonMap(const PicturedComparison& comparison);

} // namespace Orvelcs
