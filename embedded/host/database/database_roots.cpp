#include "platform/host/database.h"

#include "embedded/diagnostics/resource_counters.h"
#include "embedded/host/database/database.h"
#include "embedded/host/database/handle.h"
#include "embedded/host/database/injected_fault.h"

namespace QeHost {
namespace {

template <class T>
Qeapp::ErrorStatus openRoot(T*& object, ObjectRecord* root, QeDb::OpenMode mode, std::string_view call)
{
    object = nullptr;
    if (const auto fault = injectedFault(call, Qeapp::eOpenForWrite))
        return *fault;
    QeDbObject* opened = nullptr;
    const Qeapp::ErrorStatus status = answered([&] {
        if (!loaded(*root).isKindOf(T::desc()))
            root->database->store->refuse(Embedded::placeOf(root->handle) + "is a root of another class");
        return openRecord(opened, root, mode);
    });
    object = static_cast<T*>(opened);
    return status;
}

} // namespace
} // namespace QeHost

QeDbDatabase::QeDbDatabase(QeDb::QeDbDwgVersion version) : imp_(nullptr)
{
    auto imp = std::make_unique<QeHost::DatabaseImp>(*this, version);
    imp->createRoots();
    imp_ = imp.release();
    Embedded::ResourceCounters::add(Embedded::ResourceKind::database);
}

QeDbDatabase::~QeDbDatabase()
{
    if (QeHost::databaseDestroyedHandler != nullptr)
        QeHost::databaseDestroyedHandler(*this);
    delete imp_;
    Embedded::ResourceCounters::remove(Embedded::ResourceKind::database);
}

Qeapp::ErrorStatus QeDbDatabase::getNamedObjectsDictionary(QeDbDictionary*& dictionary, QeDb::OpenMode mode)
{
    return QeHost::openRoot(dictionary, imp_->namedObjects, mode, "QeDbDatabase::getNamedObjectsDictionary");
}

Qeapp::ErrorStatus QeDbDatabase::getRegAppTable(QeDbRegAppTable*& table, QeDb::OpenMode mode)
{
    return QeHost::openRoot(table, imp_->regAppTable, mode, "QeDbDatabase::getRegAppTable");
}

Qeapp::ErrorStatus QeDbDatabase::getBlockTable(QeDbBlockTable*& table, QeDb::OpenMode mode)
{
    return QeHost::openRoot(table, imp_->blockTable, mode, "QeDbDatabase::getBlockTable");
}

QeDbTransactionManager* QeDbDatabase::transactionManager() const
{
    return &imp_->transactions;
}

QeDb::QeDbDwgVersion QeDbDatabase::drawingVersion() const
{
    return imp_->version;
}
