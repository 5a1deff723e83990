// What runs when a drawing is saved in another drawing format.
#pragma once

#include "../export.h"
#include "database.h"
#include "error_status.h"

/// Records that a save cannot be done, by its code.
class QEHOST_API QeDbSaveErrorRecorder {
public:
    virtual Qeapp::ErrorStatus recordError(Qeapp::ErrorStatus code) = 0;

protected:
    ~QeDbSaveErrorRecorder() = default;
};

/// The same with a message for the user.
class QEHOST_API QeDbSaveErrorMessageRecorder {
public:
    virtual Qeapp::ErrorStatus recordError(Qeapp::ErrorStatus code, const wchar_t* message) = 0;

protected:
    ~QeDbSaveErrorMessageRecorder() = default;
};

/// Turns what its owner keeps in a drawing into the form that the drawing format to be saved in knows. Reactors belong
/// to their clients, which delete them as the class that they made.
class QEHOST_API QeDbDecompositionReactor {
public:
    /// Called before the drawing is written. Either recorder may be null. Any result but eOk ends the save.
    virtual Qeapp::ErrorStatus decomposeForSave(QeDbDatabase* database, QeDb::QeDbDwgVersion version,
                                                QeDbSaveErrorRecorder* errors, QeDbSaveErrorMessageRecorder* messages);
    /// After the drawing was written.
    virtual void saveCompleted(QeDbDatabase* database, QeDb::QeDbDwgVersion version);
    /// After the save was given up.
    virtual void saveAborted(QeDbDatabase* database, QeDb::QeDbDwgVersion version);

protected:
    QeDbDecompositionReactor() = default;
    ~QeDbDecompositionReactor() = default;
};

class QEHOST_API QeDbDecompositionManager {
public:
    virtual ~QeDbDecompositionManager();
    /// eInvalidInput for null, eDuplicateKey for a reactor that is registered already.
    virtual Qeapp::ErrorStatus addReactor(QeDbDecompositionReactor* reactor) = 0;
    /// eKeyNotFound for a reactor that is not registered.
    virtual Qeapp::ErrorStatus removeReactor(QeDbDecompositionReactor* reactor) = 0;
};

/// Null when the host has none.
QEHOST_API QeDbDecompositionManager* qedbGetDecompositionManager();
