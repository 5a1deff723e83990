// The rule for a function's database argument.
#pragma once

#include "platform/host.h"

namespace Orvel {

/// The database itself, or the host's working database for null; null when there is none.
[[nodiscard]] QeDbDatabase* resolveDatabase(QeDbDatabase* database);

} // namespace Orvel
