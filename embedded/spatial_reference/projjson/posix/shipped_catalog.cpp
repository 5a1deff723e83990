#include "embedded/spatial_reference/projjson/shipped_catalog.h"

namespace Embedded {

std::string shippedCatalogFolder()
{
    return {};
}

char searchPathSeparator()
{
    return ':';
}

} // namespace Embedded
