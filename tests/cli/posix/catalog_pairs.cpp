#include "cli/posix/catalog_pairs.h"

#include <cmath>
#include <memory>
#include <numbers>
#include <stdexcept>

#include <proj.h>

namespace Tests {
namespace {

struct Release {
    void operator()(PJ* object) const { proj_destroy(object); }
    void operator()(PROJ_CRS_INFO** list) const { proj_crs_info_list_destroy(list); }
};
using Object = std::unique_ptr<PJ, Release>;

PJ_CONTEXT* const kContext = PJ_DEFAULT_CTX;
constexpr double kRadiansInADegree = std::numbers::pi / 180;

bool isGeographic(PJ_TYPE type)
{
    return type == PJ_TYPE_GEOGRAPHIC_2D_CRS || type == PJ_TYPE_GEOGRAPHIC_3D_CRS;
}

bool isOfPoints(PJ_TYPE type)
{
    return isGeographic(type) || type == PJ_TYPE_PROJECTED_CRS || type == PJ_TYPE_GEOCENTRIC_CRS ||
           type == PJ_TYPE_COMPOUND_CRS;
}

/// Those of the Earth that are in force and say where they are used.
std::vector<CatalogSystem> systemsOfTheEarth()
{
    int count = 0;
    const std::unique_ptr<PROJ_CRS_INFO*, Release> list(
        proj_get_crs_info_list_from_database(kContext, nullptr, nullptr, &count));
    std::vector<CatalogSystem> systems;
    for (int index = 0; index < count; ++index) {
        const PROJ_CRS_INFO& info = *list.get()[index];
        if (info.deprecated == 0 && info.bbox_valid != 0 && isOfPoints(info.type) &&
            std::string(info.celestial_body_name != nullptr ? info.celestial_body_name : "") == "Earth")
            systems.push_back({std::string(info.auth_name) + ":" + info.code, isGeographic(info.type),
                               info.west_lon_degree, info.south_lat_degree, info.east_lon_degree,
                               info.north_lat_degree});
    }
    return systems;
}

Object system(const std::string& code)
{
    Object object(proj_create(kContext, code.c_str()));
    if (!object)
        throw std::runtime_error("PROJ cannot make " + code);
    return object;
}

Object conversion(const PJ* source, const PJ* target)
{
    return Object(proj_create_crs_to_crs_from_pj(kContext, source, target, nullptr, nullptr));
}

/// A place in the axes, in the units and from the prime meridian of a geographic system.
PJ_COORD geographicCoordinate(const PJ* geographic, double longitude, double latitude, double height)
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

/// Carries places to a system without a change of datum.
class Placement {
public:
    explicit Placement(const PJ* system)
    {
        geographic_.reset(proj_crs_get_geodetic_crs(kContext, system));
        if (proj_get_type(geographic_.get()) == PJ_TYPE_GEOCENTRIC_CRS) { // any datum puts it near enough
            geographic_ = Tests::system("EPSG:4979");
            operation_ = conversion(geographic_.get(), Tests::system("EPSG:4978").get());
        } else {
            operation_ = conversion(geographic_.get(), system);
        }
    }
    /// Not finite where the system does not reach.
    SourcePoint at(double longitude, double latitude, double height) const
    {
        if (!operation_)
            return {HUGE_VAL, HUGE_VAL, HUGE_VAL};
        const PJ_COORD point =
            proj_trans(operation_.get(), PJ_FWD, geographicCoordinate(geographic_.get(), longitude, latitude, height));
        return {point.v[0], point.v[1], point.v[2]};
    }

private:
    Object geographic_;
    Object operation_;
};

Object datumOf(const PJ* system)
{
    const Object geodetic(proj_crs_get_geodetic_crs(kContext, system));
    return Object(proj_crs_get_datum_forced(kContext, geodetic.get()));
}

double degreesInUnitOf(const PJ* system)
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

double widthOf(const CatalogSystem& system)
{
    const double width = system.east - system.west;
    return width < 0 ? width + 360 : width;
}

} // namespace

bool CatalogSystem::holds(double longitude, double latitude) const
{
    if (latitude < south || latitude > north)
        return false;
    return west <= east ? west <= longitude && longitude <= east : west <= longitude || longitude <= east;
}

CatalogPairs::CatalogPairs(unsigned seed) : random_(seed), systems_(systemsOfTheEarth())
{
    proj_log_func(kContext, nullptr, [](void*, int, const char*) {}); // it complains of systems that it cannot use
}

double CatalogPairs::between(double least, double most)
{
    return least + (most - least) * (static_cast<double>(random_()) / static_cast<double>(std::mt19937::max()));
}

const CatalogSystem& CatalogPairs::anySystem()
{
    return systems_[random_() % systems_.size()];
}

CatalogPairs::Place CatalogPairs::placeIn(const CatalogSystem& system)
{
    const double longitude = system.west + between(0, widthOf(system));
    return {longitude > 180 ? longitude - 360 : longitude, between(system.south, system.north), between(0, 100)};
}

/// By turns any system that holds the place, a geographic one, and WGS 84, to which there are most often several
/// operations.
const CatalogSystem& CatalogPairs::partnerOf(const CatalogSystem& source, const Place& place)
{
    static const CatalogSystem wgs84{"EPSG:4326", true, -180, -90, 180, 90};
    const unsigned turn = turns_++ % 3;
    const CatalogSystem* partner = turn == 2 ? &wgs84 : &anySystem();
    while (partner->code == source.code || !partner->holds(place.longitude, place.latitude) ||
           (turn == 1 && !partner->isGeographic))
        partner = &anySystem();
    return *partner;
}

CatalogPair CatalogPairs::draw()
{
    constexpr int kPlaces = 4;
    const CatalogSystem& source = anySystem();
    Place place = placeIn(source);
    const CatalogSystem& target = partnerOf(source, place);
    const Object sourceObject = system(source.code);
    const Object targetObject = system(target.code);
    CatalogPair pair{source.code, target.code, degreesInUnitOf(sourceObject.get()),
                     degreesInUnitOf(targetObject.get())};
    pair.hasTwoDatums = !proj_is_equivalent_to(datumOf(sourceObject.get()).get(), datumOf(targetObject.get()).get(),
                                               PJ_COMP_EQUIVALENT);
    const Placement placement(sourceObject.get());
    const bool hasHeights = hasHeight(sourceObject.get());
    for (int count = 0; count < kPlaces; ++count, place = placeIn(source)) {
        const SourcePoint point = placement.at(place.longitude, place.latitude, hasHeights ? place.height : 0);
        if (target.holds(place.longitude, place.latitude) && std::isfinite(point[0]) && std::isfinite(point[1]))
            pair.points.push_back(point);
    }
    return pair.points.empty() ? draw() : pair;
}

} // namespace Tests
