#include "embedded/spatial_reference/operations/axis_units.h"

#include "embedded/spatial_reference/catalog/catalog_loader.h"

namespace Embedded {
namespace {

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

} // namespace

std::vector<AxisUnit> unitsOf(const SystemParts& system)
{
    std::vector<AxisUnit> units = unitsOfAxes(system.horizontal.get());
    if (const auto code = splitCode(system.vertical)) {
        const ProjObject vertical = catalogObject(*code, PJ_CATEGORY_CRS);
        for (const AxisUnit& unit : vertical ? unitsOfAxes(vertical.get()) : std::vector<AxisUnit>())
            units.push_back(unit);
    }
    constexpr std::size_t kAxes = 3;
    units.resize(kAxes);
    return units;
}

} // namespace Embedded
