#include "embedded/spatial_reference/shipped_catalog.h"

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
