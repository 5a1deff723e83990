// A system of the catalog by its code, or why there is none.
#pragma once

#include <string>

#include "orvelcs/failure.h"
#include "orvelcs/system_description.h"
#include "storage/library_holder.h"

namespace Orvelcs {

using CatalogSystemDefinition = Orvel::LibraryObject<System>;

/// Nothing found, with the nearest codes that exist.
Failure noSuchCode(const std::wstring& code);

/// Throws Failure: noSuchCode for a code that the catalog does not have, or why the system cannot be loaded.
CatalogSystemDefinition systemFromCatalog(const std::wstring& code);

} // namespace Orvelcs
