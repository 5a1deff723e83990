#include "orvelcs/drawing/operation_failure.h"

#include "embedded/base/text.h"
#include "embedded/spatial_reference/operations/coordinate_operations.h"
#include "orvelcs/drawing/catalog_suggestion.h"

namespace Orvelcs {

Failure failureOf(const Embedded::Error& error, ExitStatus unknownCode)
{
    if (Embedded::operationErrorOf(error) != Embedded::OperationError::unknownSystem)
        return Failure(error.place, error.message);
    return Failure(error.place, error.message + nearestCodesClause(Embedded::wideFromUtf8(error.place)), unknownCode);
}

} // namespace Orvelcs
