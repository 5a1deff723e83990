// The class that clients derive from to hear of changes of drawings' coordinate systems.
#pragma once

#include "coordsys/orvel_export.h"

class QeDbDatabase;

namespace Zentara::Gis::Orvel::CoordinateSystem {

/// Hears of changes; registered with AddCoordinateSystemReactor, by which it is not owned. Every operation does nothing
/// by default and allows every change.
///
/// `name` is the code of the system that is being assigned, the empty text when an assignment has no definition or its
/// definition has no code, or null when the drawing's system is being removed. An assignment is announced twice: with
/// its name, and with null for the removal of what was there before. Texts and drawings are the caller's and are
/// valid during the call. A reactor may add and remove reactors, itself too: that takes effect with the next event.
///
/// Called on the host's main thread. An exception passes through to the caller of the function that caused the event.
class ORVEL_API OrvelCoordinateSystemReactor {
public:
    OrvelCoordinateSystemReactor();
    OrvelCoordinateSystemReactor(const OrvelCoordinateSystemReactor& other);
    /// Copies nothing.
    OrvelCoordinateSystemReactor& operator=(const OrvelCoordinateSystemReactor& other);

    virtual ~OrvelCoordinateSystemReactor();
    /// Asked before a change. False vetoes it: later reactors are not asked, and every reactor hears of the veto.
    virtual bool CoordinateSystemWillChange(QeDbDatabase* db, const wchar_t* const name);
    /// Told after a change.
    virtual void CoordinateSystemChanged(QeDbDatabase* db, const wchar_t* const name);
    /// Told that a reactor vetoed the change of that name.
    virtual void CoordinateSystemChangeVetoed(QeDbDatabase* db, const wchar_t* const name);
    /// Told that the transformation configuration was set or cleared, successfully or not.
    virtual void CsTransformationChanged();
};

} // namespace Zentara::Gis::Orvel::CoordinateSystem
