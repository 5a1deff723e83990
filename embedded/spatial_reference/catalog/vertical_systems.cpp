#include "embedded/spatial_reference/catalog/vertical_systems.h"

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_loader.h"

namespace Embedded {

bool isVerticalSystem(std::wstring_view code)
{
    const auto resolved = resolveCode(utf8FromWide(code));
    const ProjObject object = resolved ? catalogObject(*resolved, PJ_CATEGORY_CRS) : nullptr;
    return object && proj_get_type(object.get()) == PJ_TYPE_VERTICAL_CRS;
}

} // namespace Embedded
