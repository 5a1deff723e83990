// All the forms in which a drawing can hold its coordinate system.
#pragma once

#include "platform/host.h"

namespace Orvel {

/// Removes the legacy record, the definition xrecord and the GeoData text in one transaction: all of them or none.
/// Returns eNoDatabase for a null database, eNoTransaction when no transaction can be started, and otherwise the first
/// host result that is a failure.
Qeapp::ErrorStatus ClearStoredCoordinateSystem(QeDbDatabase* database);

} // namespace Orvel
