// Transactions of one database. They nest. Aborting one undoes every change made inside it, whoever made it.
#pragma once

#include "../export.h"
#include "error_status.h"

class QeDbTransaction;

class QEHOST_API QeDbTransactionManager {
public:
    virtual ~QeDbTransactionManager();
    /// Starts a transaction inside the current one, if any. The manager owns the transaction. Null when none can be
    /// started.
    virtual QeDbTransaction* startTransaction() = 0;
    /// Ends the innermost transaction and keeps its changes. Returns eNoTransaction when there is none. After any other
    /// failure the transaction is still active.
    virtual Qeapp::ErrorStatus endTransaction() = 0;
    /// Ends the innermost transaction and undoes every write, erasure and creation since its start. Returns
    /// eNoTransaction when there is none.
    virtual Qeapp::ErrorStatus abortTransaction() = 0;
    virtual int numActiveTransactions() const = 0;
};
