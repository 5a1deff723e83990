// The catalog's list of systems, in parts.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "embedded/spatial_reference/catalog/catalog.h"
#include "embedded/spatial_reference/projjson/projjson.h"

namespace Embedded {

CatalogEntry localEntry(const Projjson& projjson);

/// A system of the list by its code, which is UTF-8.
struct ListedCode {
    std::string_view authority;
    std::string_view code;
    bool deprecated;

    std::wstring text() const;
};

/// Calls `read` with every system of the list, without making an entry of each. May pass a code twice. Leaves out the
/// systems of PROJ's database when it cannot be read.
void forEachListedCode(const std::function<void(const ListedCode&)>& read);

/// The entry of a code of the list, which is spelled as there.
std::optional<CatalogEntry> listedEntry(std::wstring_view code);

} // namespace Embedded
