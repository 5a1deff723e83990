// Facts about PROJ's operations.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "embedded/spatial_reference/operations/coordinate_transformer.h"
#include "embedded/spatial_reference/projjson/proj_context.h"

namespace Embedded {

/// The grids that its steps read, in the order of use.
std::vector<OperationGrid> usedGrids(const PJ* operation);
/// "needs the grid X, which is not installed; download it from URL".
std::string describeMissingGrid(const OperationGrid& grid);
/// Nothing when the catalog states no accuracy. Conversions are exact.
std::optional<double> accuracyInMetres(const PJ* operation);
/// Returns whether PROJ implements the operation's method and all of its grids are installed.
bool isInstantiable(const PJ* operation);
/// Returns whether the operation is instantiable and its method has that direction.
bool isApplicable(PJ* operation, OperationDirection direction);
bool isBallpark(const PJ* operation);
/// Returns whether the operation's result depends on the epoch of a point.
bool isTimeDependent(PJ* operation);
/// Sets the name and the bounds of the operation's area of use to those of PROJ's object, if that has one.
void setArea(CatalogOperation& operation, const PJ* object);
UsedOperation describeOperation(PJ* operation);
/// The operation itself, or the steps of a concatenated one.
std::vector<ProjObject> operationSteps(const PJ* operation);

} // namespace Embedded
