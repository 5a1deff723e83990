#include "embedded/spatial_reference/operations/proj_coordinate.h"

#include <cmath>

#include "embedded/base/text.h"

namespace Embedded {

const char* problemOf(const CoordinatePoint& point, bool isGeocentric)
{
    if (!std::isfinite(point.x) || !std::isfinite(point.y) || !std::isfinite(point.z.value_or(0)))
        return "not a finite coordinate";
    if (!std::isfinite(point.epoch.value_or(0)))
        return "not a finite epoch";
    if (!point.z && isGeocentric)
        return "a geocentric point has three coordinates";
    return nullptr;
}

PJ_COORD projCoordinate(const CoordinatePoint& point)
{
    constexpr double kNoEpoch = HUGE_VAL; // to PROJ
    return proj_coord(point.x, point.y, point.z.value_or(0), point.epoch.value_or(kNoEpoch));
}

const char* failureOf(const PJ* operation)
{
    const int error = proj_errno(operation);
    return error != 0 ? proj_context_errno_string(projContext(), error)
                      : "outside of what the operation is defined for";
}

TransformedPoint failedPoint(const char* message)
{
    return {std::nullopt, wideFromUtf8(message)};
}

} // namespace Embedded
