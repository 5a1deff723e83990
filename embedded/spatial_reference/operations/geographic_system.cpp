#include "embedded/spatial_reference/operations/geographic_system.h"

#include <cmath>
#include <limits>
#include <string_view>

#include "embedded/base/degrees.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_connection.h"
#include "embedded/spatial_reference/catalog/catalog_database.h"
#include "embedded/spatial_reference/catalog/catalog_loader.h"
#include "embedded/spatial_reference/operations/operation_error.h"
#include "embedded/spatial_reference/projjson/proj_object.h"

namespace Embedded {
namespace {

[[noreturn]] void throwWithoutPosition(const SystemParts& system)
{
    throwOperationError(OperationError::noOperation, wideFromUtf8(describeObject(system.whole.get())),
                        "has no geographic system, so nothing can be compared in it");
}

/// A system of the catalog with the datum of a geocentric system, which is its own base.
ProjObject geographicSystemWithDatum(const SystemParts& system)
{
    constexpr const char* kSql = "SELECT auth_name || ':' || code FROM geodetic_crs WHERE type = 'geographic 2D' "
                                 "AND datum_auth_name || ':' || datum_code = ?1 AND deprecated = 0 "
                                 "ORDER BY auth_name <> datum_auth_name, length(code), code LIMIT 1";
    requireReadable(checkCatalogIsOpen());
    const auto codes = openedCatalog().query(kSql, {codeOfObject(system.datum.get())});
    const auto code = codes && !codes->empty() ? splitCode(codes->front()) : std::nullopt;
    return code ? catalogObject(*code, PJ_CATEGORY_CRS) : nullptr;
}

ProjObject geographicBase(const SystemParts& system)
{
    if (!system.isHorizontal())
        throwWithoutPosition(system);
    ProjObject base = system.isGeocentric()
                          ? geographicSystemWithDatum(system)
                          : ProjObject(proj_crs_get_geodetic_crs(projContext(), system.horizontal.get()));
    if (!base)
        throwWithoutPosition(system);
    return base;
}

double primeMeridianInDegrees(const PJ* system)
{
    const ProjObject meridian(proj_get_prime_meridian(projContext(), system));
    double longitude = 0;
    double unit = 0;
    if (!meridian || !proj_prime_meridian_get_parameters(projContext(), meridian.get(), &longitude, &unit, nullptr))
        return 0;
    return longitude * unit * kDegreesPerRadian;
}

EllipsoidShape readEllipsoid(const PJ* system)
{
    const ProjObject ellipsoid(proj_get_ellipsoid(projContext(), system));
    EllipsoidShape shape;
    double inverseFlattening = 0; // 0 for a sphere
    if (ellipsoid && proj_ellipsoid_get_parameters(projContext(), ellipsoid.get(), &shape.semiMajorAxis, nullptr,
                                                   nullptr, &inverseFlattening))
        shape.flattening = inverseFlattening == 0 ? 0 : 1 / inverseFlattening;
    return shape;
}

} // namespace

GeographicSystem::GeographicSystem(const SystemParts& system) : parts_(splitSystem(geographicBase(system)))
{
    parts_.vertical = system.vertical;
    primeMeridianInDegrees_ = Embedded::primeMeridianInDegrees(parts_.horizontal.get());
    ellipsoid_ = readEllipsoid(parts_.horizontal.get());
    readAxes();
    if (ellipsoid_.semiMajorAxis <= 0)
        throwWithoutPosition(system);
}

void GeographicSystem::readAxes()
{
    const ProjObject axes(proj_crs_get_coordinate_system(projContext(), parts_.horizontal.get()));
    for (std::size_t index = 0; index < axes_.size(); ++index) {
        const char* direction = nullptr;
        double unit = 0;
        if (!axes || !proj_cs_get_axis_info(projContext(), axes.get(), static_cast<int>(index), nullptr, nullptr,
                                            &direction, &unit, nullptr, nullptr, nullptr))
            throwWithoutPosition(parts_);
        const std::string_view name = direction;
        const bool pointsBack = name == "south" || name == "west";
        axes_[index] = {name == "north" || name == "south", (pointsBack ? -1 : 1) * unit * kDegreesPerRadian};
    }
}

PJ_COORD GeographicSystem::coordinate(const GeographicPoint& point) const
{
    constexpr double kFullCircle = 360;
    const double longitude = std::remainder(point.longitude - primeMeridianInDegrees_, kFullCircle);
    const auto value = [&](const Axis& axis) { return (axis.isLatitude ? point.latitude : longitude) / axis.degrees; };
    return proj_coord(value(axes_[0]), value(axes_[1]), 0, HUGE_VAL); // which is no epoch in PROJ
}

GeographicPoint GeographicSystem::point(const PJ_COORD& coordinate) const
{
    GeographicPoint point;
    for (std::size_t index = 0; index < axes_.size(); ++index) {
        const double degrees = coordinate.v[index] * axes_[index].degrees;
        if (!std::isfinite(degrees)) {
            constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
            return {kNone, kNone};
        }
        (axes_[index].isLatitude ? point.latitude : point.longitude) =
            axes_[index].isLatitude ? degrees : degrees + primeMeridianInDegrees_;
    }
    return point;
}

} // namespace Embedded
