// The class that clients derive from to be notified of changes to drawings' coordinate systems.
#pragma once

#include "coordsys/orvel_export.h"
#include "platform/host.h"

namespace Zentara::Gis::Orvel::CoordinateSystem {

/// Is notified of changes. Register it with AddCoordinateSystemReactor; the client owns it. By default every operation
/// does nothing and allows every change.
///
/// `name` is the code of the system that is being assigned, the empty text when an assignment has no definition or its
/// definition has no code, or null when the drawing's system is being removed. An assignment notifies twice: with its
/// name, and with null for the removal of the former system. Texts and drawings belong to the caller and are valid
/// during the call. A reactor may add and remove reactors, itself too: that takes effect with the next event.
///
/// Called on the host's main thread. An exception passes through to the caller of the function that caused the event.
class ORVEL_API OrvelCoordinateSystemReactor {
public:
    OrvelCoordinateSystemReactor();
    /// A copy is another reactor, which is not registered.
    OrvelCoordinateSystemReactor(const OrvelCoordinateSystemReactor& other);
    /// Copies nothing.
    OrvelCoordinateSystemReactor& operator=(const OrvelCoordinateSystemReactor& other);

    virtual ~OrvelCoordinateSystemReactor();
    /// Called before a change. False vetoes it: later reactors are not asked, and every reactor is notified of the
    /// veto.
    virtual bool CoordinateSystemWillChange(QeDbDatabase* db, const wchar_t* const name);
    /// Called after a change.
    virtual void CoordinateSystemChanged(QeDbDatabase* db, const wchar_t* const name);
    /// Called after a reactor has vetoed the change of that name.
    virtual void CoordinateSystemChangeVetoed(QeDbDatabase* db, const wchar_t* const name);
    /// Called after the transformation configuration was set or cleared, successfully or not.
    virtual void CsTransformationChanged();
};

} // namespace Zentara::Gis::Orvel::CoordinateSystem
