// All the forms in which a drawing may hold its coordinate system, taken together.
#pragma once

#include "platform/host.h"

namespace Orvel {

/// Removes the legacy record, the definition xrecord and the GeoData text in one transaction: all of them or none.
/// eNoDatabase for a null database, eNoTransaction when no transaction could be started; otherwise the first failing
/// host result.
Qeapp::ErrorStatus ClearStoredCoordinateSystem(QeDbDatabase* database);

} // namespace Orvel
