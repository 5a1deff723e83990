#include "embedded/spatial_reference/operations/pipeline.h"

#include <cmath>

#include "embedded/spatial_reference/operations/proj_coordinate.h"

namespace Embedded {
namespace {

Expected<PJ_COORD> apply(const PipelineStep& step, PJ_COORD coordinate)
{
    const double height = coordinate.xyz.z;
    PJ* operation = step.operation.get();
    proj_errno_reset(operation);
    coordinate = proj_trans(operation, step.direction, coordinate);
    const auto& [x, y, z] = coordinate.xyz;
    if (proj_errno(operation) != 0 || !std::isfinite(x) || !std::isfinite(y) || !std::isfinite(z))
        return failure(transformError(operation));
    if (step.keepsHeight)
        coordinate.xyz.z = height;
    return coordinate;
}

} // namespace

Pipeline::Pipeline(const SystemParts& source, const SystemParts& target, UsedOperation used, HeightRule heights)
    : CoordinateTransformer(source, target), heights_(heights)
{
    operations_.push_back(std::move(used));
}

void Pipeline::append(ProjObject operation, PJ_DIRECTION direction, bool keepsHeight)
{
    if (operation)
        steps_.push_back({std::move(operation), direction, keepsHeight});
}

TransformedPoint Pipeline::transform(const CoordinatePoint& point)
{
    return {transformPoint(point)};
}

void Pipeline::transformCoordinates(std::vector<PJ_COORD>& coordinates) const
{
    std::vector<double> heights;
    for (const PipelineStep& step : steps_) {
        heights.clear();
        for (const PJ_COORD& coordinate : coordinates)
            heights.push_back(coordinate.xyz.z);
        transformArray(step.operation.get(), step.direction, coordinates);
        for (std::size_t index = 0; step.keepsHeight && index < coordinates.size(); ++index)
            coordinates[index].xyz.z = heights[index];
    }
}

Expected<CoordinatePoint> Pipeline::transformPoint(const CoordinatePoint& point) const
{
    if (const auto check = checkPoint(point, needsHeight()); !check)
        return failure(check.error());
    const bool hasHeight = point.z || addsHeight();
    if (heights_ == HeightRule::fail && hasHeight)
        return failure(0, "the heights of the two systems differ, and the operation does not say how");
    PJ_COORD coordinate = projCoordinate(point);
    for (const PipelineStep& step : steps_) {
        const auto applied = apply(step, coordinate);
        if (!applied)
            return failure(applied.error());
        coordinate = *applied;
    }
    if (heights_ != HeightRule::transform)
        coordinate.xyz.z = point.z.value_or(0);
    CoordinatePoint result{coordinate.xyz.x, coordinate.xyz.y};
    if (hasHeight)
        result.z = coordinate.xyz.z;
    return result;
}

} // namespace Embedded
