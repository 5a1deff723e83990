// Holders for what the host returns: opened and new objects, resbuf chains, buffers, transactions, document locks.
#pragma once

#include "platform/host.h"
#include "storage/holder.h"
#include "storage/ignore_result.h"

namespace Orvel {

/// Closes an object that is in a database, and deletes one that was never added to any.
template <class T>
struct HostObjectPolicy {
    using Handle = T*;
    static void dispose(T* object)
    {
        if (object->objectId().isNull())
            delete object;
        else
            ignoreResult([=] { return object->close(); });
    }
};

/// A host object and the ways to open it. A success without an object becomes eNoObject.
template <class T>
class HostObject : public Holder<HostObjectPolicy<T>> {
public:
    using Holder<HostObjectPolicy<T>>::Holder;

    Qeapp::ErrorStatus open(QeDbObjectId id, QeDb::OpenMode mode)
    {
        return openWith([&](T*& object) { return qedbOpenObject(object, id, mode); });
    }

    /// Opens through a call that fills an out-parameter.
    template <class Open>
    Qeapp::ErrorStatus openWith(const Open& open)
    {
        const Qeapp::ErrorStatus result = open(this->put());
        return result == Qeapp::eOk && !*this ? Qeapp::eNoObject : result;
    }
};

/// The named objects dictionary of a database.
class NamedObjects : public HostObject<QeDbDictionary> {
public:
    Qeapp::ErrorStatus openIn(QeDbDatabase* database, QeDb::OpenMode mode)
    {
        return openWith([&](QeDbDictionary*& object) { return database->getNamedObjectsDictionary(object, mode); });
    }
};

struct ResbufPolicy {
    using Handle = resbuf*;
    static void dispose(resbuf* chain)
    {
        ignoreResult([=] { return qeutRelRb(chain); });
    }
};
using ResbufChain = Holder<ResbufPolicy>;

/// Releases what qeutNewString and qeutNewBuffer return.
template <class Element>
struct HostBufferPolicy {
    using Handle = Element*;
    static void dispose(Element* buffer)
    {
        ignoreResult([&] { return qeutDelBuffer(buffer); });
    }
};
using HostString = Holder<HostBufferPolicy<wchar_t>>;

/// A transaction that is aborted at the end of the scope unless it was committed.
class Transaction {
public:
    explicit Transaction(QeDbTransactionManager* manager)
        : manager_(manager->startTransaction() != nullptr ? manager : nullptr)
    {
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction()
    {
        if (started())
            ignoreResult([&] { return manager_->abortTransaction(); });
    }

    [[nodiscard]] bool started() const { return manager_ != nullptr; }
    Qeapp::ErrorStatus commit()
    {
        const Qeapp::ErrorStatus result = manager_->endTransaction();
        if (result == Qeapp::eOk)
            manager_ = nullptr;
        return result;
    }

private:
    QeDbTransactionManager* manager_;
};

/// The current document, locked for write until the scope ends.
class DocumentLock {
public:
    DocumentLock() : manager_(qeDocManager()), document_(manager_ != nullptr ? lockCurrent(*manager_) : nullptr) {}
    DocumentLock(const DocumentLock&) = delete;
    DocumentLock& operator=(const DocumentLock&) = delete;
    ~DocumentLock()
    {
        if (document_ != nullptr)
            ignoreResult([&] { return manager_->unlockDocument(document_); });
    }

    explicit operator bool() const { return document_ != nullptr; }

private:
    /// Null when it cannot be locked.
    static QeApDocument* lockCurrent(QeApDocManager& manager)
    {
        QeApDocument* const document = manager.curDocument();
        if (document == nullptr)
            return nullptr;
        return manager.lockDocument(document, QeAp::kWrite, nullptr, nullptr, true) == Qeapp::eOk ? document : nullptr;
    }

    QeApDocManager* manager_;
    QeApDocument* document_;
};

} // namespace Orvel
