// Points in the form of PROJ, and what is wrong with a point.
#pragma once

#include <vector>

#include "embedded/spatial_reference/operations/coordinate_transformer.h"
#include "embedded/spatial_reference/projjson/proj_context.h"

namespace Embedded {

/// Checks whether the point can be transformed at all.
Expected<void> checkPoint(const CoordinatePoint& point, bool isGeocentric);

/// A point without a height has height 0 in PROJ, one without an epoch no epoch.
PJ_COORD projCoordinate(const CoordinatePoint& point);

/// Transforms the coordinates in place. Those of a point that fails become HUGE_VAL.
void transformArray(PJ* operation, PJ_DIRECTION direction, std::vector<PJ_COORD>& coordinates);

/// Why proj_trans() of the operation gave no coordinates.
Error transformError(const PJ* operation);

} // namespace Embedded
