// Transactions over one database. They nest; what happened inside an aborted one is undone, whoever did it.
#pragma once

#include "../export.h"
#include "error_status.h"

class QeDbTransaction;

class QEHOST_API QeDbTransactionManager {
public:
    virtual ~QeDbTransactionManager();
    /// Starts a transaction inside the current one, if any. Null when none could be started; the transaction is the
    /// manager's own.
    virtual QeDbTransaction* startTransaction() = 0;
    /// Ends the innermost transaction and keeps what was done in it. eNoTransaction when there is none; on any other
    /// failure the transaction is still active.
    virtual Qeapp::ErrorStatus endTransaction() = 0;
    /// Ends the innermost transaction and undoes every write, erasure and creation since its start. eNoTransaction when
    /// there is none.
    virtual Qeapp::ErrorStatus abortTransaction() = 0;
    virtual int numActiveTransactions() const = 0;
};
