// The running application: services, open documents and their locks.
#pragma once

#include "../export.h"
#include "error_status.h"

class QeDbDatabase;

class QEHOST_API QeDbHostApplicationServices {
public:
    virtual ~QeDbHostApplicationServices();
    /// The drawing that commands use. May be null.
    virtual QeDbDatabase* workingDatabase() const = 0;
    virtual void setWorkingDatabase(QeDbDatabase* database) = 0;
    /// The product's per-user registry path, relative to HKEY_CURRENT_USER, without a trailing backslash. Valid until
    /// the host changes it.
    virtual const wchar_t* getUserRegistryProductRootKey() const = 0;
};

/// Null only while the host shuts down.
QEHOST_API QeDbHostApplicationServices* qedbHostApplicationServices();

namespace QeAp {
enum DocLockMode : int { kNone = 0, kAutoWrite = 1, kNotLocked = 2, kWrite = 4, kProtectedAutoWrite = 20, kRead = 32 };
} // namespace QeAp

/// An open document. The host makes and owns it.
class QEHOST_API QeApDocument {
public:
    virtual ~QeApDocument();
    virtual QeDbDatabase* database() const = 0;
    /// The strongest lock on the document now.
    virtual QeAp::DocLockMode lockMode() const = 0;
};

class QEHOST_API QeApDocManager {
public:
    virtual ~QeApDocManager();
    /// The document that commands use. Null when none is open.
    virtual QeApDocument* curDocument() const = 0;
    /// Locks the document until the matching unlock. Locks nest. Returns eInvalidInput for a null or foreign document,
    /// eLockConflict when another owner's lock prevents it.
    virtual Qeapp::ErrorStatus lockDocument(QeApDocument* document, QeAp::DocLockMode mode = QeAp::kWrite,
                                            const wchar_t* globalCommandName = nullptr,
                                            const wchar_t* localCommandName = nullptr, bool prompt = true) = 0;
    /// Returns eNotLocked when the document is not locked.
    virtual Qeapp::ErrorStatus unlockDocument(QeApDocument* document) = 0;
};

/// Null only while the host shuts down.
QEHOST_API QeApDocManager* qeDocManager();
