#include "embedded/spatial_reference/catalog/local_systems.h"

#include <algorithm>

namespace Embedded {
namespace {

Projjson axis(const char* name, const char* abbreviation, const char* direction, const Projjson& unit)
{
    return {{"name", name}, {"abbreviation", abbreviation}, {"direction", direction}, {"unit", unit}};
}

Projjson planeSystem(const char* code, const char* name, const Projjson& unit)
{
    Projjson system{{"type", "EngineeringCRS"}, {"name", name}};
    system["datum"] = {{"name", "Local datum"}};
    system["coordinate_system"] = {
        {"subtype", "Cartesian"},
        {"axis", Projjson::array({axis("Easting", "X", "east", unit), axis("Northing", "Y", "north", unit)})}};
    system["id"] = {{"authority", std::string(kLocalAuthority)}, {"code", code}};
    return system;
}

Projjson foot(const char* name, double factor, int epsgCode)
{
    return {{"type", "LinearUnit"},
            {"name", name},
            {"conversion_factor", factor},
            {"id", {{"authority", "EPSG"}, {"code", epsgCode}}}};
}

} // namespace

const std::vector<Projjson>& localSystems()
{
    static const std::vector<Projjson> systems{
        planeSystem("FOOT", "Local plane (foot)", foot("foot", 0.3048, 9002)),
        planeSystem("METRE", "Local plane (metre)", "metre"),
        planeSystem("US-SURVEY-FOOT", "Local plane (US survey foot)", foot("US survey foot", 0.304800609601219, 9003)),
    };
    return systems;
}

const Projjson* findLocalSystem(std::string_view code)
{
    const auto& systems = localSystems();
    const auto found =
        std::ranges::find_if(systems, [code](const Projjson& system) { return textOf(system["id"], "code") == code; });
    return found == systems.end() ? nullptr : &*found;
}

} // namespace Embedded
