// Geodetic transformations (single operations) and geodetic paths (concatenated operations) of the catalog.
#pragma once

#include <string_view>
#include <vector>

#include "embedded/spatial_reference/catalog/catalog_loader.h"
#include "embedded/spatial_reference/projjson/definition_data.h"

namespace Embedded {

/// By AUTHORITY:CODE or by exact name; `type` is DefinitionType::transformation or path. statusAmbiguous for a name
/// that several have; operations in use come before deprecated ones of the same name.
Loaded loadOperation(const wchar_t* codeOrName, DefinitionType type);

/// What the name fits, by code.
std::vector<DefinitionData> operationsNamed(std::string_view name, DefinitionType type);

} // namespace Embedded
