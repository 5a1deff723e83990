// Definitions from the catalog, by code.
#pragma once

#include <optional>
#include <string_view>

#include "embedded/spatial_reference/catalog/catalog_database.h"
#include "embedded/spatial_reference/projjson/catalog_code.h"
#include "embedded/spatial_reference/projjson/definition_data.h"
#include "embedded/spatial_reference/projjson/proj_context.h"
#include "platform/spatial_reference/status.h"

namespace Embedded {

/// The code with its authority as the catalog spells it, whatever case it came in; nothing for an authority that the
/// catalog does not have.
std::optional<CatalogCode> resolveCode(std::string_view utf8);

/// The catalog's object, or null. `code` must be resolved.
ProjObject catalogObject(const CatalogCode& code, PJ_CATEGORY category);
/// The same for an operation, with its grids under the names of the files that PROJ would read, which need not be the
/// catalog's; it has another code then.
ProjObject operationWithInstalledGrids(const CatalogCode& code);

/// What a load came to; `data` is present exactly when the status is statusOk.
struct Loaded {
    Zentara::Infrastructure::SpatialReference::Status status = Zentara::Infrastructure::SpatialReference::statusFailed;
    std::optional<DefinitionData> data;
};

/// A system, datum or ellipsoid by its code; the text may be null. statusNotFound says that the catalog was asked and
/// does not have it.
Loaded loadFromCatalog(const wchar_t* text, DefinitionType type);

/// For a code that loadFromCatalog gives nothing for: why the catalog could not be asked, or nothing when it was.
std::optional<CatalogFault> faultBehindMissing(std::string_view utf8, DefinitionType type);

} // namespace Embedded
