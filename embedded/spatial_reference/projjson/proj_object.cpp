#include "embedded/spatial_reference/projjson/proj_object.h"

namespace Embedded {

std::string codeOfObject(const PJ* object)
{
    const char* authority = proj_get_id_auth_name(object, 0);
    const char* code = proj_get_id_code(object, 0);
    return authority && code ? CatalogCode{authority, code}.text() : std::string();
}

std::string originalCode(const PJ* object)
{
    auto code = splitCode(codeOfObject(object));
    if (!code)
        return {};
    const auto innermost = code->authority.rfind('(');
    if (innermost != std::string::npos)
        code->authority = code->authority.substr(innermost + 1, code->authority.find(')') - innermost - 1);
    return code->text();
}

bool AreaOfUse::contains(double latitude, double longitude) const
{
    if (latitude < south || latitude > north)
        return false;
    return west <= east ? west <= longitude && longitude <= east : west <= longitude || longitude <= east;
}

std::optional<AreaOfUse> areaOfUse(const PJ* object)
{
    AreaOfUse area;
    const char* name = nullptr;
    if (!proj_get_area_of_use(projContext(), object, &area.west, &area.south, &area.east, &area.north, &name))
        return std::nullopt;
    area.name = name ? name : "";
    return area;
}

std::optional<std::string> wktOf(const PJ* object, PJ_WKT_TYPE type)
{
    const char* const options[] = {"MULTILINE=NO", nullptr};
    const char* text = proj_as_wkt(projContext(), object, type, options);
    return text ? std::optional<std::string>(text) : std::nullopt;
}

std::vector<ProjObject> objectsOf(const ProjList& list)
{
    std::vector<ProjObject> objects;
    const int count = list ? proj_list_get_count(list.get()) : 0;
    for (int index = 0; index < count; ++index) {
        if (ProjObject object{proj_list_get(projContext(), list.get(), index)})
            objects.push_back(std::move(object));
    }
    return objects;
}

} // namespace Embedded
