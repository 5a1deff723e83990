// Looks for systems of the catalog by words of their codes and names.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "embedded/spatial_reference/catalog/catalog.h"

namespace Embedded {

struct CatalogQuery {
    std::wstring text; // every word must occur in the code or the name, ignoring case; a code in any notation
    std::optional<Zentara::Infrastructure::SpatialReference::CoordinateReferenceSystemKind> kind{}; // any when empty
    std::wstring authority{};                                                                       // any when empty
    bool includesDeprecated = false;
    bool ignoresInside = false; // whether a word that occurs only inside another counts as none
    std::size_t limit = 0;      // 0: all
};

/// An exact code comes first, then an exact name, then what has every word of the text as a whole word, then what has
/// them at the beginning of words, then the rest. Within each of these systems in use precede deprecated ones, and
/// authority and number decide the rest. A number alone is the exact code of every authority.
ZSR_API std::vector<CatalogEntry> searchCatalog(const CatalogQuery& query);

} // namespace Embedded
