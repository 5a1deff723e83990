// The units of a system's coordinates.
#pragma once

#include <vector>

#include "embedded/spatial_reference/operations/coordinate_transformer.h"
#include "embedded/spatial_reference/operations/system_parts.h"

namespace Embedded {

/// The units of the three axes. The third one is the metre when the system has no height.
std::vector<AxisUnit> unitsOf(const SystemParts& system);

} // namespace Embedded
