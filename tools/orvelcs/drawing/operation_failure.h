// Refusals of the spatial-reference library as the program tells them.
#pragma once

#include "embedded/spatial_reference/operations/coordinate_operations.h"
#include "orvelcs/cli/failure.h"

namespace Orvelcs {

/// With the nearest codes for an unknown one, for which the command ends with `unknownCode`.
Failure failureOf(const Embedded::OperationRefusal& refusal, ExitStatus unknownCode);

} // namespace Orvelcs
