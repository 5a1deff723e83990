// The reactors that the host calls when it saves a drawing in another drawing version.
#pragma once

#include "../export.h"
#include "database.h"
#include "error_status.h"

/// Records the error of a save that fails.
class QEHOST_API QeDbSaveErrorRecorder {
public:
    virtual Qeapp::ErrorStatus recordError(Qeapp::ErrorStatus code) = 0;

protected:
    ~QeDbSaveErrorRecorder() = default;
};

/// Records the error with a message for the user.
class QEHOST_API QeDbSaveErrorMessageRecorder {
public:
    virtual Qeapp::ErrorStatus recordError(Qeapp::ErrorStatus code, const wchar_t* message) = 0;

protected:
    ~QeDbSaveErrorMessageRecorder() = default;
};

/// Rewrites its client's objects in a drawing in the form of the drawing version to be saved. A client owns its
/// reactors and deletes each through the class that it made.
class QEHOST_API QeDbDecompositionReactor {
public:
    /// Called before the drawing is written. Either recorder may be null. Any result except eOk ends the save.
    virtual Qeapp::ErrorStatus decomposeForSave(QeDbDatabase* database, QeDb::QeDbDwgVersion version,
                                                QeDbSaveErrorRecorder* errors, QeDbSaveErrorMessageRecorder* messages);
    /// Called after the drawing is written.
    virtual void saveCompleted(QeDbDatabase* database, QeDb::QeDbDwgVersion version);
    /// Called after the save is aborted.
    virtual void saveAborted(QeDbDatabase* database, QeDb::QeDbDwgVersion version);

protected:
    QeDbDecompositionReactor() = default;
    ~QeDbDecompositionReactor() = default;
};

class QEHOST_API QeDbDecompositionManager {
public:
    virtual ~QeDbDecompositionManager();
    /// Returns eInvalidInput for null, eDuplicateKey for a reactor that is already registered.
    virtual Qeapp::ErrorStatus addReactor(QeDbDecompositionReactor* reactor) = 0;
    /// Returns eKeyNotFound for a reactor that is not registered.
    virtual Qeapp::ErrorStatus removeReactor(QeDbDecompositionReactor* reactor) = 0;
};

/// Null when the host has none.
QEHOST_API QeDbDecompositionManager* qedbGetDecompositionManager();
