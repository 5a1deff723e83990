// Notices of changes to the registered reactors, in the order of their registration.
#pragma once

#include "platform/host.h"

namespace Zentara::Gis::Orvel::CoordinateSystem {

/// Asks the reactors until one vetoes the change. Then notifies every reactor of the veto and returns false.
[[nodiscard]] bool NotifyCoordinateSystemWillChange(QeDbDatabase* db, const wchar_t* name);
void NotifyCoordinateSystemChanged(QeDbDatabase* db, const wchar_t* name);
void NotifyCoordinateSystemChangeVetoed(QeDbDatabase* db, const wchar_t* name);
void NotifyCsTransformationChanged();

} // namespace Zentara::Gis::Orvel::CoordinateSystem
