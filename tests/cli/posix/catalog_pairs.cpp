#include "cli/posix/catalog_pairs.h"

#include <cmath>
#include <memory>
#include <numbers>
#include <stdexcept>

#include <proj.h>

namespace Tests {
namespace {

struct ProjDeleter {
    void operator()(PJ* object) const { proj_destroy(object); }
    void operator()(PROJ_CRS_INFO** list) const { proj_crs_info_list_destroy(list); }
};
using Object = std::unique_ptr<PJ, ProjDeleter>;

PJ_CONTEXT* const kContext = PJ_DEFAULT_CTX;
constexpr double kRadiansInADegree = std::numbers::pi / 180;

bool isGeographic(PJ_TYPE type)
{
    return type == PJ_TYPE_GEOGRAPHIC_2D_CRS || type == PJ_TYPE_GEOGRAPHIC_3D_CRS;
}

bool hasPoints(PJ_TYPE type)
{
    return isGeographic(type) || type == PJ_TYPE_PROJECTED_CRS || type == PJ_TYPE_GEOCENTRIC_CRS ||
           type == PJ_TYPE_COMPOUND_CRS;
}

/// The systems of the Earth that are not deprecated and have an area of use.
std::vector<CatalogSystem> findSystemsOfTheEarth()
{
    int count = 0;
    const std::unique_ptr<PROJ_CRS_INFO*, ProjDeleter> list(
        proj_get_crs_info_list_from_database(kContext, nullptr, nullptr, &count));
    std::vector<CatalogSystem> systems;
    for (int index = 0; index < count; ++index) {
        const PROJ_CRS_INFO& info = *list.get()[index];
        if (info.deprecated == 0 && info.bbox_valid != 0 && hasPoints(info.type) &&
            std::string(info.celestial_body_name != nullptr ? info.celestial_body_name : "") == "Earth")
            systems.push_back({std::string(info.auth_name) + ":" + info.code, isGeographic(info.type),
                               info.west_lon_degree, info.south_lat_degree, info.east_lon_degree,
                               info.north_lat_degree});
    }
    return systems;
}

Object createSystem(const std::string& code)
{
    Object object(proj_create(kContext, code.c_str()));
    if (!object)
        throw std::runtime_error("PROJ cannot make " + code);
    return object;
}

Object createConversion(const PJ* source, const PJ* target)
{
    return Object(proj_create_crs_to_crs_from_pj(kContext, source, target, nullptr, nullptr));
}

/// Converts a place to the axes, the units and the prime meridian of a geographic system.
PJ_COORD toGeographicCoordinate(const PJ* geographic, double longitude, double latitude, double height)
{
    const Object meridian(proj_get_prime_meridian(kContext, geographic));
    double meridianValue = 0;
    double meridianUnit = 0;
    proj_prime_meridian_get_parameters(kContext, meridian.get(), &meridianValue, &meridianUnit, nullptr);
    const Object axes(proj_crs_get_coordinate_system(kContext, geographic));
    PJ_COORD coordinate = proj_coord(0, 0, height, HUGE_VAL);
    for (int axis = 0; axis < 2; ++axis) {
        const char* direction = nullptr;
        double unit = 1;
        proj_cs_get_axis_info(kContext, axes.get(), axis, nullptr, nullptr, &direction, &unit, nullptr, nullptr,
                              nullptr);
        const bool isLatitude = std::string(direction) == "north";
        const double radians =
            isLatitude ? latitude * kRadiansInADegree : longitude * kRadiansInADegree - meridianValue * meridianUnit;
        coordinate.v[axis] = radians / unit;
    }
    return coordinate;
}

/// Converts places to a system without a change of datum.
class PlaceConverter {
public:
    explicit PlaceConverter(const PJ* system)
    {
        geographic_.reset(proj_crs_get_geodetic_crs(kContext, system));
        if (proj_get_type(geographic_.get()) == PJ_TYPE_GEOCENTRIC_CRS) { // any datum is accurate enough
            geographic_ = createSystem("EPSG:4979");
            operation_ = createConversion(geographic_.get(), createSystem("EPSG:4978").get());
        } else {
            operation_ = createConversion(geographic_.get(), system);
        }
    }
    /// The result is not finite outside the domain of the system.
    AxisPoint convert(double longitude, double latitude, double height) const
    {
        if (!operation_)
            return {HUGE_VAL, HUGE_VAL, HUGE_VAL};
        const PJ_COORD point = proj_trans(operation_.get(), PJ_FWD,
                                          toGeographicCoordinate(geographic_.get(), longitude, latitude, height));
        return {point.v[0], point.v[1], point.v[2]};
    }

private:
    Object geographic_;
    Object operation_;
};

Object getDatum(const PJ* system)
{
    const Object geodetic(proj_crs_get_geodetic_crs(kContext, system));
    return Object(proj_crs_get_datum_forced(kContext, geodetic.get()));
}

double getDegreesInUnit(const PJ* system)
{
    if (!isGeographic(proj_get_type(system)))
        return 1;
    const Object axes(proj_crs_get_coordinate_system(kContext, system));
    double radians = kRadiansInADegree;
    proj_cs_get_axis_info(kContext, axes.get(), 0, nullptr, nullptr, nullptr, &radians, nullptr, nullptr, nullptr);
    return radians / kRadiansInADegree;
}

bool hasHeight(const PJ* system)
{
    const PJ_TYPE type = proj_get_type(system);
    return type == PJ_TYPE_GEOGRAPHIC_3D_CRS || type == PJ_TYPE_GEOCENTRIC_CRS || type == PJ_TYPE_COMPOUND_CRS;
}

double getWidth(const CatalogSystem& system)
{
    const double width = system.east - system.west;
    return width < 0 ? width + 360 : width;
}

} // namespace

bool CatalogSystem::contains(double longitude, double latitude) const
{
    if (latitude < south || latitude > north)
        return false;
    return west <= east ? west <= longitude && longitude <= east : west <= longitude || longitude <= east;
}

CatalogPairs::CatalogPairs(unsigned seed) : random_(seed), systems_(findSystemsOfTheEarth())
{
    proj_log_func(kContext, nullptr, [](void*, int, const char*) {}); // PROJ logs systems that it cannot use
}

double CatalogPairs::randomBetween(double least, double most)
{
    return least + (most - least) * (static_cast<double>(random_()) / static_cast<double>(std::mt19937::max()));
}

const CatalogSystem& CatalogPairs::randomSystem()
{
    return systems_[random_() % systems_.size()];
}

CatalogPairs::Place CatalogPairs::randomPlaceIn(const CatalogSystem& system)
{
    const double longitude = system.west + randomBetween(0, getWidth(system));
    return {longitude > 180 ? longitude - 360 : longitude, randomBetween(system.south, system.north),
            randomBetween(0, 100)};
}

/// Chooses in turn any system that contains the place, a geographic one, and WGS 84, which most often has several
/// operations to choose from.
const CatalogSystem& CatalogPairs::randomTarget(const CatalogSystem& source, const Place& place)
{
    static const CatalogSystem wgs84{"EPSG:4326", true, -180, -90, 180, 90};
    const unsigned turn = turns_++ % 3;
    const CatalogSystem* target = turn == 2 ? &wgs84 : &randomSystem();
    while (target->code == source.code || !target->contains(place.longitude, place.latitude) ||
           (turn == 1 && !target->isGeographic))
        target = &randomSystem();
    return *target;
}

CatalogPair CatalogPairs::draw()
{
    constexpr int kPlaces = 4;
    const CatalogSystem& source = randomSystem();
    Place place = randomPlaceIn(source);
    const CatalogSystem& target = randomTarget(source, place);
    const Object sourceObject = createSystem(source.code);
    const Object targetObject = createSystem(target.code);
    CatalogPair pair{source.code, target.code, getDegreesInUnit(sourceObject.get()),
                     getDegreesInUnit(targetObject.get())};
    pair.hasTwoDatums = !proj_is_equivalent_to(getDatum(sourceObject.get()).get(), getDatum(targetObject.get()).get(),
                                               PJ_COMP_EQUIVALENT);
    const PlaceConverter converter(sourceObject.get());
    const bool hasHeights = hasHeight(sourceObject.get());
    for (int count = 0; count < kPlaces; ++count, place = randomPlaceIn(source)) {
        const AxisPoint point = converter.convert(place.longitude, place.latitude, hasHeights ? place.height : 0);
        if (target.contains(place.longitude, place.latitude) && std::isfinite(point[0]) && std::isfinite(point[1]))
            pair.points.push_back(point);
    }
    return pair.points.empty() ? draw() : pair;
}

} // namespace Tests
