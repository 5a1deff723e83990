// How the making of an operation ends early, inside this library only.
#pragma once

#include <optional>
#include <utility>

#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog_database.h"
#include "embedded/spatial_reference/operations/coordinate_operations.h"

namespace Embedded {

struct OperationRefused {
    OperationRefusal refusal;
};

[[noreturn]] inline void refuse(RefusalReason reason, std::wstring subject, std::string_view message,
                                std::vector<OperationCandidate> candidates = {})
{
    throw OperationRefused{{reason, std::move(subject), wideFromUtf8(message), std::move(candidates)}};
}

/// Refuses where there is a fault.
inline void requireReadable(const std::optional<CatalogFault>& fault)
{
    if (fault)
        refuse(RefusalReason::catalogUnavailable, L"proj.db", unreadableCatalogMessage(fault->cause));
}

/// Refuses to go on with what PROJ has answered when it could not read all of its database.
inline void requireCompleteAnswer()
{
    requireReadable(faultOfLastAnswer());
}

} // namespace Embedded
