#include "embedded/spatial_reference/projjson/catalog_code.h"

namespace Embedded {

std::optional<CatalogCode> splitCode(std::string_view utf8)
{
    const auto colon = utf8.find(':');
    if (colon == std::string_view::npos || colon == 0 || colon + 1 == utf8.size())
        return std::nullopt;
    return CatalogCode{std::string(utf8.substr(0, colon)), std::string(utf8.substr(colon + 1))};
}

} // namespace Embedded
