// How the making of an operation ends early, inside this library only.
#pragma once

#include <utility>

#include "embedded/foundation/text.h"
#include "embedded/spatial_reference/catalog_database.h"
#include "embedded/spatial_reference/coordinate_operations.h"

namespace Embedded {

struct OperationRefused {
    OperationRefusal refusal;
};

[[noreturn]] inline void refuse(RefusalReason reason, std::wstring subject, std::string_view message,
                                std::vector<OperationCandidate> candidates = {})
{
    throw OperationRefused{{reason, std::move(subject), wideFromUtf8(message), std::move(candidates)}};
}

/// Refuses to go on with what PROJ has answered when it could not read all of its database.
inline void requireCompleteAnswer()
{
    if (const auto fault = faultOfLastAnswer())
        refuse(RefusalReason::catalogUnavailable, L"proj.db", "the catalog cannot be read: " + fault->cause);
}

} // namespace Embedded
