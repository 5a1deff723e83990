// Geodetic transformations (single operations) and geodetic paths (concatenated operations) of the catalog.
#pragma once

#include <string_view>
#include <vector>

#include "embedded/base/error.h"
#include "embedded/spatial_reference/projjson/definition_data.h"

namespace Embedded {

/// Loads by AUTHORITY:CODE or by exact name; `type` is DefinitionType::transformation or path. The Error has
/// statusNotFound, statusAmbiguous for a name that fits several, statusCatalogUnavailable or statusOutOfMemory.
Expected<DefinitionData> loadOperation(const wchar_t* codeOrName, DefinitionType type);

/// The operations of exactly this name, by code. Deprecated ones only when no other has the name.
std::vector<DefinitionData> operationsNamed(std::string_view name, DefinitionType type);

} // namespace Embedded
