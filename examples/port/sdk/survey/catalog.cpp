#include "definitions.h"

#include "../core/text.h"

#include <algorithm>
#include <array>

namespace Survey {
namespace {

const std::array ellipsoids{
    Ellipsoid{"GRS80", "GRS 1980", 6378137, 298.257222101},
    Ellipsoid{"WGS84", "WGS 84", 6378137, 298.257223563},
    Ellipsoid{"INTL24", "International 1924", 6378388, 297},
    Ellipsoid{"SPHERE", "Sphere of 6,371 km", 6371000, 0},
};

const std::array datums{
    Datum{"ETRS", "European Terrestrial Reference System 1989", "GRS80", {}},
    Datum{"WGS", "World Geodetic System 1984", "WGS84", {}},
    Datum{"ED50", "European Datum 1950", "INTL24", {}},
};

constexpr const char* zone32 = "Transverse_Mercator latitude_of_origin=0 central_meridian=9 scale_factor=0.9996 "
                               "false_easting=500000 false_northing=0";
constexpr const char* zone33 = "Transverse_Mercator latitude_of_origin=0 central_meridian=15 scale_factor=0.9996 "
                               "false_easting=500000 false_northing=0";

const std::array systems{
    System{"ETRS.GEO", "ETRS89", SystemKind::geographic, "ETRS", "", "", {}, {}},
    System{"ETRS.UTM32", "ETRS89, UTM zone 32 north", SystemKind::projected, "ETRS", "", zone32, {}, {}},
    System{"ETRS.UTM33", "ETRS89, UTM zone 33 north", SystemKind::projected, "ETRS", "", zone33, {}, {}},
    System{"WGS.GEO", "WGS 84", SystemKind::geographic, "WGS", "", "", {}, {}},
    System{"ED50.GEO", "ED50", SystemKind::geographic, "ED50", "", "", {}, {}},
    System{"ED50.UTM32", "ED50, UTM zone 32 north", SystemKind::projected, "ED50", "", zone32, {}, {}},
    System{"SPHERE.GEO", "Positions on a sphere", SystemKind::geographic, "", "SPHERE", "", {}, {}},
    System{"SITE.METRE", "A site in metres", SystemKind::local, "", "", "", {}, {}},
};

const std::array shifts{
    Shift{"ED50 to WGS 84, mean", false, true},
    Shift{"ED50 to ETRS89, grid", false, false},
    Shift{"ED50 to ETRS89 by WGS 84", true, true},
    Shift{"ED50 to WGS 84 by grids", true, false},
};

template <class Table>
auto findByCode(const Table& table, std::string_view code)
{
    using Found = std::optional<typename Table::value_type>;
    const auto found =
        std::find_if(table.begin(), table.end(), [code](const auto& each) { return Core::sameCode(each.code, code); });
    return found == table.end() ? Found() : Found(*found);
}

} // namespace

std::optional<System> findSystem(std::string_view code)
{
    return findByCode(systems, code);
}

std::optional<Datum> findDatum(std::string_view code)
{
    return findByCode(datums, code);
}

std::optional<Ellipsoid> findEllipsoid(std::string_view code)
{
    return findByCode(ellipsoids, code);
}

std::optional<Shift> findShift(std::string_view name, bool isPath)
{
    const auto found = std::find_if(shifts.begin(), shifts.end(), [name, isPath](const Shift& shift) {
        return shift.name == name && shift.isPath == isPath;
    });
    return found == shifts.end() ? std::nullopt : std::optional(*found);
}

std::optional<Datum> datumUnder(const System& system)
{
    return system.datum ? system.datum : findDatum(system.datumCode);
}

std::optional<Ellipsoid> ellipsoidUnder(const Datum& datum)
{
    return datum.ellipsoid ? datum.ellipsoid : findEllipsoid(datum.ellipsoidCode);
}

std::optional<Ellipsoid> ellipsoidUnder(const System& system)
{
    if (const auto datum = datumUnder(system))
        return ellipsoidUnder(*datum);
    return system.ellipsoid ? system.ellipsoid : findEllipsoid(system.ellipsoidCode);
}

Definitions withDependents(const Definition& definition)
{
    Definitions all{definition};
    if (const auto* system = std::get_if<System>(&definition)) {
        if (const auto datum = datumUnder(*system))
            all.emplace_back(*datum);
        if (const auto ellipsoid = ellipsoidUnder(*system))
            all.emplace_back(*ellipsoid);
    } else if (const auto* datum = std::get_if<Datum>(&definition)) {
        if (const auto ellipsoid = ellipsoidUnder(*datum))
            all.emplace_back(*ellipsoid);
    }
    return all;
}

} // namespace Survey
