// Transformations and paths as the commands print them.
#pragma once

#include <string>

#include "embedded/spatial_reference/operations/coordinate_operations.h"
#include "orvelcs/cli/json.h"
#include "orvelcs/cli/output.h"

namespace Orvelcs {

/// [west, south, east, north]; null where there are none.
Json boundsAsJson(const std::optional<Embedded::GeographicBounds>& bounds);
Json catalogOperationAsJson(const Embedded::CatalogOperation& operation);

/// "1 m", or "accuracy unknown".
std::string accuracyText(const Embedded::CatalogOperation& operation);

/// Prints indented lines with the area of use and the grids.
void printAreaAndGrids(const Embedded::CatalogOperation& operation, Output& output);
/// Prints a further one of these lines.
void printDetail(const std::string& text, Output& output);

} // namespace Orvelcs
