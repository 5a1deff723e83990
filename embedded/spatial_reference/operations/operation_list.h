// The catalog's operations between two systems.
#pragma once

#include <vector>

#include "embedded/spatial_reference/operations/coordinate_operations.h"
#include "embedded/spatial_reference/operations/system_parts.h"

namespace Embedded {

/// What operationsBetween() returns. Throws ErrorException.
std::vector<CatalogOperation> listOperations(const SystemParts& source, const SystemParts& target);

} // namespace Embedded
