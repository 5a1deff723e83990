// Resbuf values as values of a drawing file: INTEGER, REAL, TEXT or BLOB, as their group codes say.
#pragma once

#include <cstdint>
#include <optional>

#include "embedded/host/database/resbuf_value.h"
#include "embedded/host/drawing_file/drawing_connection.h"

namespace Embedded {

StoredValue storedFromResbuf(const ResbufValue& value);
/// Nothing for a value that the group code does not call for.
std::optional<ResbufValue> resbufFromStored(std::int64_t code, const StoredValue& value);

} // namespace Embedded
