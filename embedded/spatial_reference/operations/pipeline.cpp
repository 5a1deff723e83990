#include "embedded/spatial_reference/operations/pipeline.h"

#include <cmath>

#include "embedded/spatial_reference/operations/axis_units.h"
#include "embedded/spatial_reference/operations/operation_facts.h"
#include "embedded/spatial_reference/operations/proj_coordinate.h"

namespace Embedded {
namespace {

/// What was wrong, when the step went wrong.
const char* apply(const ChainStep& step, PJ_COORD& coordinate)
{
    const double height = coordinate.xyz.z;
    PJ* operation = step.operation.get();
    proj_errno_reset(operation);
    coordinate = proj_trans(operation, step.direction, coordinate);
    const auto& [x, y, z] = coordinate.xyz;
    if (proj_errno(operation) != 0 || !std::isfinite(x) || !std::isfinite(y) || !std::isfinite(z))
        return failureOf(operation);
    if (step.keepsHeight)
        coordinate.xyz.z = height;
    return nullptr;
}

} // namespace

Pipeline::Pipeline(const SystemParts& source, const SystemParts& target, UsedOperation used, HeightRule heights)
    : CoordinateTransformer(unitsOf(target)),
      heights_(heights),
      sourceNeedsHeight_(source.isGeocentric()),
      targetNeedsHeight_(target.isGeocentric())
{
    operations_.push_back(std::move(used));
}

void Pipeline::append(ProjObject operation, PJ_DIRECTION direction, bool keepsHeight)
{
    if (operation)
        steps_.push_back({std::move(operation), direction, keepsHeight});
}

const char* Pipeline::refusalOf(const CoordinatePoint& point) const
{
    if (const char* problem = problemOf(point, sourceNeedsHeight_))
        return problem;
    if (heights_ == HeightRule::unknown && (point.z || targetNeedsHeight_))
        return "the heights of the two systems differ, and the operation does not say how";
    return nullptr;
}

TransformedPoint Pipeline::transform(const CoordinatePoint& point)
{
    if (const char* refusal = refusalOf(point))
        return failedPoint(refusal);
    PJ_COORD coordinate = projCoordinate(point);
    for (const ChainStep& step : steps_) {
        if (const char* failure = apply(step, coordinate))
            return failedPoint(failure);
    }
    if (heights_ != HeightRule::carried)
        coordinate.xyz.z = point.z.value_or(0);
    CoordinatePoint result{coordinate.xyz.x, coordinate.xyz.y};
    if (point.z || targetNeedsHeight_)
        result.z = coordinate.xyz.z;
    return {result, {}};
}

} // namespace Embedded
