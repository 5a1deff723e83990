// Transactions: each keeps the state that every object had before its first change in it.
#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include "embedded/host/database/object.h"
#include "embedded/host/database/object_snapshot.h"
#include "platform/host/transaction.h"

class QeDbTransaction {
public:
    /// Null for an object that was created in the transaction.
    std::unordered_map<QeHost::ObjectRecord*, std::unique_ptr<QeHost::ObjectSnapshot>> before;
    Embedded::Handle nextHandle = 0;
};

namespace QeHost {

class TransactionManager final : public QeDbTransactionManager {
public:
    explicit TransactionManager(DatabaseImp& database) : database_(database) {}

    QeDbTransaction* startTransaction() override;
    Qeapp::ErrorStatus endTransaction() override;
    Qeapp::ErrorStatus abortTransaction() override;
    int numActiveTransactions() const override;

    void recordCreation(ObjectRecord& record);
    void recordWrite(ObjectRecord& record);

    /// End transactions until `depth` are left. Fault injection does not affect them.
    void commitTo(int depth);
    void abortTo(int depth);

private:
    void commitInnermost();
    void abortInnermost();

    DatabaseImp& database_;
    std::vector<std::unique_ptr<QeDbTransaction>> active_;
};

} // namespace QeHost
