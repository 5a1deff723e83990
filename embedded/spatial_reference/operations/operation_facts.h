// What PROJ says of one of its operations.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "embedded/spatial_reference/operations/coordinate_transformer.h"
#include "embedded/spatial_reference/projjson/proj_context.h"

namespace Embedded {

/// The files that its steps read, in the order of use.
std::vector<OperationGrid> gridsOf(const PJ* operation);
/// In metres; nothing where none is stated. Conversions are exact by definition.
std::optional<double> accuracyOf(const PJ* operation);
std::wstring areaOfUseOf(const PJ* operation);
/// Whether PROJ knows its method, and all of its grids are installed.
bool isInstantiable(const PJ* operation);
/// The same, and the method has that direction.
bool isApplicable(PJ* operation, OperationDirection direction);
bool isBallpark(const PJ* operation);
/// Whether what it does to a point depends on the point's epoch.
bool isTimeDependent(PJ* operation);
/// The operation's code, name, accuracy and the other facts that a program shows.
UsedOperation describeOperation(PJ* operation);
/// The operation alone, or the steps of a concatenated one.
std::vector<ProjObject> stepsOf(const PJ* operation);

} // namespace Embedded
