// Points as PROJ takes them, and what is wrong with a point before and after.
#pragma once

#include "embedded/spatial_reference/operations/coordinate_transformer.h"
#include "embedded/spatial_reference/projjson/proj_context.h"

namespace Embedded {

/// Why the point cannot be transformed at all; null when it can.
const char* problemOf(const CoordinatePoint& point, bool isGeocentric);

/// A point without a height gets height 0, one without an epoch no epoch.
PJ_COORD projCoordinate(const CoordinatePoint& point);

/// Why proj_trans() of the operation gave no coordinates: PROJ's message, or that the point lies outside.
const char* failureOf(const PJ* operation);

TransformedPoint failedPoint(const char* message);

} // namespace Embedded
