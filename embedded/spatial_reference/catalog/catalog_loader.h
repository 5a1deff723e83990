// Definitions from the catalog, by code.
#pragma once

#include <optional>
#include <string_view>

#include "embedded/base/error.h"
#include "embedded/spatial_reference/projjson/catalog_code.h"
#include "embedded/spatial_reference/projjson/definition_data.h"
#include "embedded/spatial_reference/projjson/proj_context.h"

namespace Embedded {

/// The code with its authority as the catalog spells it, in whatever case it came; nothing for an authority that the
/// catalog does not have.
std::optional<CatalogCode> resolveCode(std::string_view utf8);

/// The catalog's object, or null. `code` must be resolved.
ProjObject catalogObject(const CatalogCode& code, PJ_CATEGORY category);
/// The same for an operation, with its grids under the names of the files that PROJ would read, which may differ from
/// the catalog's. The operation has another code then.
ProjObject operationWithInstalledGrids(const CatalogCode& code);

/// A system, datum or ellipsoid by its code. The text may be null. The Error has statusNotFound when the catalog can be
/// read and does not have it, otherwise statusCatalogUnavailable or statusOutOfMemory.
Expected<DefinitionData> loadFromCatalog(const wchar_t* text, DefinitionType type);

/// The Error of loadFromCatalog for a code that it cannot load.
Error explainMissingDefinition(std::string_view utf8, DefinitionType type);

} // namespace Embedded
