// Looks for systems of the catalog by words of their codes and names.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "embedded/spatial_reference/catalog/catalog.h"

namespace Embedded {

struct CatalogQuery {
    std::wstring text; // every word must occur in the code or the name, ignoring case
    std::optional<Zentara::Infrastructure::SpatialReference::CoordinateReferenceSystemKind> kind{}; // any when empty
    std::wstring authority{};                                                                       // any when empty
    bool includesDeprecated = false;
    std::size_t limit = 0; // 0: all
};

/// An exact code comes first, then an exact name, then names that begin with the text, then the rest; each by authority
/// and number.
ZSR_API std::vector<CatalogEntry> searchCatalog(const CatalogQuery& query);

} // namespace Embedded
