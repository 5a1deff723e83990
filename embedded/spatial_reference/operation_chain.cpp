#include "embedded/spatial_reference/operation_chain.h"

#include <cmath>

#include "embedded/foundation/text.h"
#include "embedded/spatial_reference/catalog_loader.h"

namespace Embedded {
namespace {

constexpr std::size_t kAxes = 3;

std::vector<AxisUnit> unitsOfAxes(const PJ* system)
{
    std::vector<AxisUnit> units;
    const ProjObject axes(proj_crs_get_coordinate_system(projContext(), system));
    if (!axes)
        return units;
    const bool isEllipsoidal = proj_cs_get_type(projContext(), axes.get()) == PJ_CS_TYPE_ELLIPSOIDAL;
    const int count = proj_cs_get_axis_count(projContext(), axes.get());
    for (int index = 0; index < count; ++index) {
        AxisUnit unit;
        unit.isAngular = isEllipsoidal && index < 2;
        if (proj_cs_get_axis_info(projContext(), axes.get(), index, nullptr, nullptr, nullptr, &unit.toBaseUnit,
                                  nullptr, nullptr, nullptr))
            units.push_back(unit);
    }
    return units;
}

std::vector<AxisUnit> unitsOf(const SystemParts& system)
{
    std::vector<AxisUnit> units = unitsOfAxes(system.horizontal.get());
    if (const auto code = splitCode(system.vertical)) {
        const ProjObject vertical = catalogObject(*code, PJ_CATEGORY_CRS);
        for (const AxisUnit& unit : vertical ? unitsOfAxes(vertical.get()) : std::vector<AxisUnit>())
            units.push_back(unit);
    }
    units.resize(kAxes);
    return units;
}

bool isFinite(const PJ_COORD& coordinate)
{
    return std::isfinite(coordinate.xyz.x) && std::isfinite(coordinate.xyz.y) && std::isfinite(coordinate.xyz.z);
}

/// What was wrong, when the step went wrong.
const char* apply(const ChainStep& step, PJ_COORD& coordinate)
{
    const double height = coordinate.xyz.z;
    PJ* operation = step.operation.get();
    proj_errno_reset(operation);
    coordinate = proj_trans(operation, step.direction, coordinate);
    if (const int error = proj_errno(operation))
        return proj_context_errno_string(projContext(), error);
    if (step.keepsHeight)
        coordinate.xyz.z = height;
    return isFinite(coordinate) ? nullptr : "outside of what the operation is defined for";
}

TransformedPoint failed(const char* message)
{
    return {std::nullopt, wideFromUtf8(message)};
}

} // namespace

OperationChain::OperationChain(const SystemParts& source, const SystemParts& target, UsedOperation used,
                               HeightRule heights)
    : used_(std::move(used)),
      heights_(heights),
      sourceNeedsHeight_(source.isGeocentric()),
      targetNeedsHeight_(target.isGeocentric()),
      targetUnits_(unitsOf(target))
{
}

void OperationChain::append(ProjObject operation, PJ_DIRECTION direction, bool keepsHeight)
{
    if (operation)
        steps_.push_back({std::move(operation), direction, keepsHeight});
}

const char* OperationChain::refusalOf(const CoordinatePoint& point) const
{
    if (!std::isfinite(point.x) || !std::isfinite(point.y) || !std::isfinite(point.z.value_or(0)))
        return "not a finite coordinate";
    if (!point.z && sourceNeedsHeight_)
        return "a geocentric point has three coordinates";
    if (heights_ == HeightRule::unknown && (point.z || targetNeedsHeight_))
        return "the heights of the two systems differ, and the operation does not say how";
    return nullptr;
}

TransformedPoint OperationChain::transform(const CoordinatePoint& point) const
{
    if (const char* refusal = refusalOf(point))
        return failed(refusal);
    PJ_COORD coordinate = proj_coord(point.x, point.y, point.z.value_or(0), HUGE_VAL);
    for (const ChainStep& step : steps_) {
        if (const char* failure = apply(step, coordinate))
            return failed(failure);
    }
    if (heights_ != HeightRule::carried)
        coordinate.xyz.z = point.z.value_or(0);
    CoordinatePoint result{coordinate.xyz.x, coordinate.xyz.y, std::nullopt};
    if (point.z || targetNeedsHeight_)
        result.z = coordinate.xyz.z;
    return {result, {}};
}

} // namespace Embedded
