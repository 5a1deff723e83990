// The units in which a system's coordinates are told.
#pragma once

#include <vector>

#include "embedded/spatial_reference/coordinate_transformer.h"
#include "embedded/spatial_reference/system_parts.h"

namespace Embedded {

/// Of three axes; where the system has no height, metres.
std::vector<AxisUnit> unitsOf(const SystemParts& system);

} // namespace Embedded
