// The fan-outs: each event, to every registered reactor in the order of registration.
#pragma once

class QeDbDatabase;

namespace Zentara::Gis::Orvel::CoordinateSystem {

/// Asks until one says no; then every reactor is told of the veto and the answer is false.
[[nodiscard]] bool NotifyCoordinateSystemWillChange(QeDbDatabase* db, const wchar_t* name);
void NotifyCoordinateSystemChanged(QeDbDatabase* db, const wchar_t* name);
void NotifyCoordinateSystemChangeVetoed(QeDbDatabase* db, const wchar_t* name);
void NotifyCsTransformationChanged();

} // namespace Zentara::Gis::Orvel::CoordinateSystem
