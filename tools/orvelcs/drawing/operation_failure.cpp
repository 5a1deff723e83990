#include "orvelcs/drawing/operation_failure.h"

#include "embedded/base/text.h"
#include "orvelcs/drawing/catalog_suggestion.h"

namespace Orvelcs {

Failure failureOf(const Embedded::OperationRefusal& refusal, ExitStatus unknownCode)
{
    const std::string subject = Embedded::utf8FromWide(refusal.subject);
    const std::string message = Embedded::utf8FromWide(refusal.message);
    if (refusal.reason != Embedded::RefusalReason::unknownSystem)
        return Failure(subject, message);
    return Failure(subject, message + nearestCodesClause(refusal.subject), unknownCode);
}

} // namespace Orvelcs
