#include "embedded/spatial_reference/operations/proj_coordinate.h"

#include <cmath>

namespace Embedded {
namespace {

/// Null for what PROJ says well enough, and for what its later versions may say.
const char* describeInPlainWords(int error)
{
    switch (error) {
    case PROJ_ERR_COORD_TRANSFM_INVALID_COORD:
        return "not a place on the Earth, such as a latitude beyond 90 degrees";
    case PROJ_ERR_COORD_TRANSFM_OUTSIDE_PROJECTION_DOMAIN:
        return "outside of the area where the projection can be calculated";
    case PROJ_ERR_COORD_TRANSFM_NO_OPERATION:
        return "no operation is made for this place";
    case PROJ_ERR_COORD_TRANSFM_OUTSIDE_GRID:
        return "outside of the grid";
    case PROJ_ERR_COORD_TRANSFM_GRID_AT_NODATA:
        return "in a part of the grid that has no values";
    default:
        return nullptr;
    }
}

} // namespace

Expected<void> checkPoint(const CoordinatePoint& point, bool isGeocentric)
{
    if (!std::isfinite(point.x) || !std::isfinite(point.y) || !std::isfinite(point.z.value_or(0)))
        return failure(0, "not a finite coordinate");
    if (!std::isfinite(point.epoch.value_or(0)))
        return failure(0, "not a finite epoch");
    if (!point.z && isGeocentric)
        return failure(0, "a geocentric point has three coordinates");
    return {};
}

PJ_COORD projCoordinate(const CoordinatePoint& point)
{
    constexpr double kNoEpoch = HUGE_VAL; // as PROJ defines it
    return proj_coord(point.x, point.y, point.z.value_or(0), point.epoch.value_or(kNoEpoch));
}

void transformArray(PJ* operation, PJ_DIRECTION direction, std::vector<PJ_COORD>& coordinates)
{
    if (coordinates.empty())
        return;
    constexpr std::size_t kStride = sizeof(PJ_COORD);
    const std::size_t count = coordinates.size();
    auto& [x, y, z, time] = coordinates.front().v;
    // The number of points that it returns is that of all, also when some fail.
    static_cast<void>(proj_trans_generic(operation, direction, &x, kStride, count, &y, kStride, count, &z, kStride,
                                         count, &time, kStride, count));
}

Error transformError(const PJ* operation)
{
    const int error = proj_errno(operation);
    if (const char* message = describeInPlainWords(error))
        return {error, message, {}};
    if (error != 0)
        return {error, proj_context_errno_string(projContext(), error), {}};
    return {0, "outside of what the operation is defined for", {}};
}

} // namespace Embedded
