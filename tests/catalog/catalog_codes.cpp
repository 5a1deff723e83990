#include "catalog/catalog_codes.h"

#include <proj.h>

#include <memory>

#include "embedded/foundation/text.h"

namespace Tests {
namespace {

struct ContextDeleter {
    void operator()(PJ_CONTEXT* context) const { proj_context_destroy(context); }
};
struct ListDeleter {
    void operator()(PROJ_CRS_INFO** list) const { proj_crs_info_list_destroy(list); }
};

bool isProjectedOrGeographic(PJ_TYPE type)
{
    return type == PJ_TYPE_PROJECTED_CRS || type == PJ_TYPE_GEOGRAPHIC_2D_CRS || type == PJ_TYPE_GEOGRAPHIC_3D_CRS;
}

} // namespace

std::vector<std::wstring> liveProjectedAndGeographicCodes()
{
    const std::unique_ptr<PJ_CONTEXT, ContextDeleter> context(proj_context_create());
    int count = 0;
    const std::unique_ptr<PROJ_CRS_INFO*, ListDeleter> list(
        proj_get_crs_info_list_from_database(context.get(), nullptr, nullptr, &count));
    std::vector<std::wstring> codes;
    for (int index = 0; index < count; ++index) {
        const PROJ_CRS_INFO& info = *list.get()[index];
        if (info.deprecated != 0 || !isProjectedOrGeographic(info.type))
            continue;
        codes.push_back(Embedded::wideFromUtf8(std::string(info.auth_name) + ':' + info.code));
    }
    return codes;
}

} // namespace Tests
