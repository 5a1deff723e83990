#include "catalog/catalog_codes.h"

#include <proj.h>

#include <algorithm>
#include <initializer_list>
#include <memory>

#include "embedded/base/text.h"

namespace Tests {
namespace {

struct ContextDeleter {
    void operator()(PJ_CONTEXT* context) const { proj_context_destroy(context); }
};
struct ListDeleter {
    void operator()(PROJ_CRS_INFO** list) const { proj_crs_info_list_destroy(list); }
};

std::vector<std::wstring> liveCodes(std::initializer_list<PJ_TYPE> types)
{
    const std::unique_ptr<PJ_CONTEXT, ContextDeleter> context(proj_context_create());
    int count = 0;
    const std::unique_ptr<PROJ_CRS_INFO*, ListDeleter> list(
        proj_get_crs_info_list_from_database(context.get(), nullptr, nullptr, &count));
    std::vector<std::wstring> codes;
    for (int index = 0; index < count; ++index) {
        const PROJ_CRS_INFO& info = *list.get()[index];
        if (info.deprecated == 0 && std::ranges::find(types, info.type) != types.end())
            codes.push_back(Embedded::wideFromUtf8(std::string(info.auth_name) + ':' + info.code));
    }
    return codes;
}

} // namespace

std::vector<std::wstring> selectPart(const std::vector<std::wstring>& codes, std::size_t part)
{
    std::vector<std::wstring> selected;
    for (std::size_t index = part * kCatalogStride; index < codes.size(); index += kCatalogParts * kCatalogStride)
        selected.push_back(codes[index]);
    return selected;
}

std::vector<std::wstring> liveProjectedAndGeographicCodes()
{
    return liveCodes({PJ_TYPE_PROJECTED_CRS, PJ_TYPE_GEOGRAPHIC_2D_CRS, PJ_TYPE_GEOGRAPHIC_3D_CRS});
}

std::vector<std::wstring> liveCompoundAndGeocentricCodes()
{
    return liveCodes({PJ_TYPE_COMPOUND_CRS, PJ_TYPE_GEOCENTRIC_CRS});
}

} // namespace Tests
