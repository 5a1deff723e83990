// Xrecords: database objects that hold one resbuf chain.
#pragma once

#include "object.h"

class QEHOST_API QeDbXrecord : public QeDbObject {
public:
    QERX_DECLARE_CLASS();
    QeDbXrecord();

    /// Replaces the contents by a copy of the chain. A null chain clears them. `database` is the one that the record is
    /// in or will be added to, or null. Returns eInvalidResbuf for a group code that the host does not store.
    Qeapp::ErrorStatus setFromRbChain(const resbuf* chain, QeDbDatabase* database = nullptr);
    /// On eOk `chain` is a copy that the caller releases with qeutRelRb, or null for an empty record. Otherwise it is
    /// null.
    Qeapp::ErrorStatus rbChain(resbuf*& chain, QeDbDatabase* database = nullptr) const;
};

/// Walks a record's resbufs without copying them. The record must be open as long as the iterator is used.
class QEHOST_API QeDbXrecordIterator {
public:
    /// Starts at the first resbuf.
    explicit QeDbXrecordIterator(const QeDbXrecord* record);
    bool done() const;
    bool next();
    /// The current resbuf's group code. -1 when done.
    short curResType() const;

private:
    const QeDbXrecord* record_;
    std::size_t position_ = 0;
};
