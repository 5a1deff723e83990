// The rule for the database argument of a function.
#pragma once

#include "platform/host.h"

namespace Orvel {

/// Returns the database itself, or the host's working database for null. Null when there is none.
[[nodiscard]] QeDbDatabase* resolveDatabase(QeDbDatabase* database);

} // namespace Orvel
