// Errors about coordinate operations, thrown inside this room only: its exported functions return them.
#pragma once

#include <string>
#include <utility>

#include "embedded/base/error.h"
#include "embedded/base/text.h"
#include "embedded/spatial_reference/catalog/catalog.h"
#include "embedded/spatial_reference/operations/coordinate_operations.h"

namespace Embedded {

[[noreturn]] inline void throwOperationError(OperationError kind, const std::wstring& subject, std::string message)
{
    throw ErrorException(Error{static_cast<int>(kind), std::move(message), utf8FromWide(subject)});
}

/// Throws when the catalog cannot be read.
inline void requireReadable(const Expected<void>& check)
{
    if (!check)
        throwOperationError(OperationError::catalogUnavailable, L"proj.db", unreadableCatalogMessage(check.error()));
}

} // namespace Embedded
