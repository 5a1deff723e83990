#include "embedded/spatial_reference/operations/map_projection.h"

#include <cmath>
#include <limits>

#include "embedded/base/degrees.h"
#include "embedded/spatial_reference/projjson/proj_context.h"
#include "platform/spatial_reference/status.h"

namespace Embedded {
namespace {

MapPoint scaled(const MapPoint& point, double factor)
{
    return {point.x * factor, point.y * factor};
}

void projectArray(PJ* projection, PJ_DIRECTION direction, std::span<MapPoint> points)
{
    constexpr std::size_t kStride = sizeof(MapPoint);
    MapPoint& first = points.front();
    static_cast<void>(proj_trans_generic(projection, direction, &first.x, kStride, points.size(), &first.y, kStride,
                                         points.size(), nullptr, 0, 0, nullptr, 0, 0));
    for (MapPoint& point : points)
        if (!std::isfinite(point.x) || !std::isfinite(point.y))
            point.x = point.y = std::numeric_limits<double>::quiet_NaN();
}

} // namespace

struct MapProjection::Implementation {
    explicit Implementation(ProjObject made) : projection(std::move(made)) {}

    ProjObject projection;
};

MapProjection::MapProjection(std::unique_ptr<Implementation> implementation)
    : implementation_(std::move(implementation))
{
}

MapProjection::MapProjection(MapProjection&&) noexcept = default;
MapProjection& MapProjection::operator=(MapProjection&&) noexcept = default;
MapProjection::~MapProjection() = default;

Expected<MapProjection> MapProjection::create(const std::string& definition)
{
    forgetProjMessage();
    ProjObject projection(proj_create(projContext(), definition.c_str()));
    if (!projection)
        return failure(Zentara::Infrastructure::SpatialReference::statusUnreadable, lastProjMessage(), definition);
    return MapProjection(std::make_unique<Implementation>(std::move(projection)));
}

void MapProjection::project(std::span<MapPoint> points) const
{
    if (points.empty())
        return;
    for (MapPoint& point : points)
        point = scaled(point, kRadiansPerDegree);
    projectArray(implementation_->projection.get(), PJ_FWD, points);
}

void MapProjection::unproject(std::span<MapPoint> points) const
{
    if (points.empty())
        return;
    projectArray(implementation_->projection.get(), PJ_INV, points);
    for (MapPoint& point : points)
        point = scaled(point, kDegreesPerRadian);
}

} // namespace Embedded
