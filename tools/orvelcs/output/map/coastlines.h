// The land of the Earth, as Natural Earth has it.
#pragma once

#include <vector>

#include "orvelcs/output/map/plane_clipping.h"

namespace Orvelcs {

enum class CoastlineScale { small, medium }; // 1:110 million, 1:50 million

/// "1:110 million".
const char* coastlineScaleName(CoastlineScale scale);

/// The rings around land and around the inland seas in it, as longitudes from -180 to 180 and latitudes. Land across
/// the antimeridian is cut there, and the one around the south pole has the parallel of the pole as an edge.
std::vector<PlaneLine> landRings(CoastlineScale scale);

/// The coast of a ring: without the edges along the antimeridian and along the parallel of the pole.
std::vector<PlaneLine> coastOf(const PlaneLine& ring);

} // namespace Orvelcs
