// A system of the catalog by its code, or why there is none.
#pragma once

#include <string>

#include "orvelcs/system_description.h"
#include "storage/library_holder.h"

namespace Orvelcs {

using CatalogSystemDefinition = Orvel::LibraryObject<System>;

/// Throws Failure: nothing found for a code that the catalog does not have, with the nearest that exist.
CatalogSystemDefinition systemFromCatalog(const std::wstring& code);

} // namespace Orvelcs
