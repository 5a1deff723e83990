// Finds out which transformation or path is meant by a name that the catalog does not have in this spelling.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/spatial_reference/catalog/catalog.h"
#include "platform/spatial_reference/transformation.h"

namespace Embedded {

/// The names of the catalog that differ from the name at most in the case of the letters A to Z, each once. A code is
/// spelled as the catalog spells it. The Error has statusCatalogUnavailable or statusOutOfMemory.
ZSR_API Expected<std::vector<std::wstring>>
operationSpellings(std::wstring_view codeOrName, Zentara::Infrastructure::SpatialReference::TransformationKind kind);

/// The operations in use whose names have most words in common with the name, the best first, at most `limit`. A
/// misspelt word counts as the nearest one. Empty when the catalog cannot be read.
ZSR_API std::vector<OperationCandidate>
suggestOperations(std::wstring_view name, Zentara::Infrastructure::SpatialReference::TransformationKind kind,
                  std::size_t limit);

} // namespace Embedded
