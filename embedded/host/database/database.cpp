#include "embedded/host/database/database.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "embedded/base/text.h"
#include "embedded/diagnostics/resource_counters.h"
#include "embedded/host/database/handle.h"
#include "embedded/host/database/injected_fault.h"
#include "embedded/host/database/memory.h"
#include "embedded/host/database/object_classes.h"
#include "embedded/host/database/symbol_table.h"
#include "platform/host/geodata.h"

using Embedded::ResourceCounters;
using Embedded::ResourceKind;

namespace QeHost {
namespace {

/// Of which no object knows yet.
ObjectRecord& addRecord(DatabaseImp& database, Embedded::Handle handle)
{
    database.objectRecords.push_back(std::make_unique<ObjectRecord>(
        ObjectRecord{.database = &database, .handle = handle, .position = database.objectRecords.size()}));
    return *database.objectRecords.back();
}

void attach(ObjectRecord& objectRecord, QeDbObject& object, ObjectRecord* owner)
{
    objectRecord.object = &object;
    ObjectImp& imp = object.imp();
    imp.record = &objectRecord;
    imp.state->owner = owner;
    ResourceCounters::remove(ResourceKind::detachedObject);
}

std::string faultOfEntry(Embedded::Handle dictionary)
{
    return "does not belong to object " + Embedded::formatHandle(dictionary) + ", which lists it";
}

/// Throws an Error unless a stored object of the class can have the owner, which is null for none.
void requireOwner(const DatabaseImp& database, const ObjectRecord& objectRecord, const ObjectClass& itsClass,
                  const ObjectRecord* owner)
{
    const auto refuse = [&](const std::string& message) { database.store->throwDamage(objectRecord.handle, message); };
    const bool isRoot = database.isRoot(objectRecord);
    if (isRoot != (owner == nullptr))
        refuse(isRoot ? "is a root and has an owner" : "has no owner");
    const Embedded::Handle ownersHandle = isRoot ? 0 : owner->handle;
    if (!isRoot && !itsClass.canBeOwnedBy(*owner->object->isA()))
        refuse("cannot belong to object " + Embedded::formatHandle(ownersHandle));
    if (objectRecord.listedBy != 0 && objectRecord.listedBy != ownersHandle)
        refuse(faultOfEntry(objectRecord.listedBy));
}

} // namespace

} // namespace QeHost

QeDbDatabaseImp::QeDbDatabaseImp(QeDbDatabase& itself, QeDb::QeDbDwgVersion itsVersion)
    : database(itself), version(itsVersion)
{
}

// Opens that nobody ended and transactions that are still active stay in the audit: they are what a client forgot.
QeDbDatabaseImp::~QeDbDatabaseImp()
{
    clear();
}

void QeDbDatabaseImp::destroy(QeDbObjectRecord& objectRecord)
{
    if (objectRecord.isInFile)
        destroyedHandles.insert(objectRecord.handle);
    std::erase(geoDataObjects, &objectRecord);
    if (const auto known = storedRecords.find(objectRecord.handle);
        known != storedRecords.end() && known->second == &objectRecord)
        storedRecords.erase(known);
    delete objectRecord.object;
    const std::size_t position = objectRecord.position;
    objectRecords.back()->position = position;
    std::swap(objectRecords[position], objectRecords.back());
    objectRecords.pop_back();
}

void QeDbDatabaseImp::clear()
{
    for (const std::unique_ptr<QeDbObjectRecord>& objectRecord : objectRecords) {
        objectRecord->database = nullptr; // from here on a record ends with its last id, this one
        ++objectRecord->ids;
    }
    for (const std::unique_ptr<QeDbObjectRecord>& objectRecord : objectRecords)
        delete objectRecord->object;
    for (std::unique_ptr<QeDbObjectRecord>& objectRecord : objectRecords)
        QeHost::releaseId(*objectRecord.release());
    objectRecords.clear();
    storedRecords.clear();
    geoDataObjects.clear();
    pendingCollection.clear();
}

QeDbObjectRecord& QeDbDatabaseImp::adopt(QeDbObject& object, QeDbObjectRecord* owner)
{
    QeDbObjectRecord& objectRecord = QeHost::addRecord(*this, nextHandle);
    try {
        transactions.recordCreation(objectRecord);
    } catch (...) {
        objectRecords.pop_back();
        throw;
    }
    QeHost::attach(objectRecord, object, owner);
    ++nextHandle;
    object.imp().writing = true;
    object.imp().modified = false;
    objectRecord.isChanged = true;
    ResourceCounters::add(ResourceKind::openObject);
    return objectRecord;
}

QeDbObjectRecord& QeDbDatabaseImp::place(QeDbObject& object, QeDbObjectRecord* owner, Embedded::Handle handle)
{
    nextHandle = std::max(nextHandle, handle + 1);
    QeDbObjectRecord& objectRecord = QeHost::addRecord(*this, handle);
    QeHost::attach(objectRecord, object, owner);
    objectRecord.isChanged = true;
    return objectRecord;
}

void QeDbDatabaseImp::createRoots()
{
    namedObjects = &place(*QeHost::makeHostObject<QeDbDictionary>(), nullptr, nextHandle);
    regAppTable = &place(*QeHost::makeHostObject<QeDbRegAppTable>(), nullptr, nextHandle);
    blockTable = &place(*QeHost::makeHostObject<QeDbBlockTable>(), nullptr, nextHandle);
    modelSpace = &place(*QeHost::makeHostObject<QeDbBlockTableRecord>(), blockTable, nextHandle);
    QeHost::writableStateOf<QeHost::SymbolRecordState>(*modelSpace->object).name = kQeDbModelSpaceName;
    QeHost::writableStateOf<QeHost::SymbolTableState>(*blockTable->object).records.push_back(modelSpace);
}

QeDbObjectRecord& QeDbDatabaseImp::storedRecord(Embedded::Handle handle)
{
    const auto [entry, isNew] = storedRecords.try_emplace(handle, nullptr);
    if (!isNew)
        return *entry->second;
    try {
        entry->second = &QeHost::addRecord(*this, handle);
    } catch (...) {
        storedRecords.erase(entry);
        throw;
    }
    entry->second->isStored = true;
    entry->second->isInFile = true;
    return *entry->second;
}

QeDbObjectRecord& QeDbDatabaseImp::storedEntry(Embedded::Handle handle, const QeDbObjectRecord& dictionary)
{
    QeDbObjectRecord& entry = storedRecord(handle);
    if (entry.object == nullptr && entry.listedBy == 0)
        entry.listedBy = dictionary.handle; // until it is QeHost::loaded
    const QeDbObjectRecord* const owner = entry.object != nullptr ? entry.object->imp().state->owner : nullptr;
    const Embedded::Handle itsOwner = entry.object == nullptr ? entry.listedBy : owner != nullptr ? owner->handle : 0;
    if (itsOwner != dictionary.handle)
        store->throwDamage(entry.handle, QeHost::faultOfEntry(dictionary.handle));
    return entry;
}

void QeDbDatabaseImp::load(QeDbObjectRecord& objectRecord)
{
    std::vector<std::pair<QeDbObjectRecord*, QeHost::StoredObject>>
        path; // up to the first owner that is there already, or a root
    std::unordered_set<const QeDbObjectRecord*> known;
    for (QeDbObjectRecord* next = &objectRecord; next != nullptr && next->object == nullptr;) {
        if (!known.insert(next).second)
            store->throwDamage(next->handle, "belongs to itself, through its owners");
        if (!next->isStored)
            store->throwDamage(path.back().first->handle, "belongs to an object that is gone");
        path.emplace_back(next, store->lookUp(next->handle));
        const Embedded::Handle owner = path.back().second.owner;
        next = owner != 0 ? &storedRecord(owner) : nullptr;
    }
    for (auto each = path.rbegin(); each != path.rend(); ++each)
        loadBelow(*each->first, each->second);
}

/// Its owner is loaded.
void QeDbDatabaseImp::loadBelow(QeDbObjectRecord& objectRecord, const QeHost::StoredObject& stored)
{
    if (objectRecord.object != nullptr) // a table loads its records
        return;
    const QeHost::ObjectClass* const itsClass = QeHost::findClass(stored.className);
    if (itsClass == nullptr)
        store->throwDamage(objectRecord.handle,
                           "is of an unknown class, " +
                               Embedded::truncateForMessage(Embedded::utf8FromWide(stored.className)));
    QeDbObjectRecord* const owner = stored.owner != 0 ? &storedRecord(stored.owner) : nullptr;
    QeHost::requireOwner(*this, objectRecord, *itsClass, owner);
    const bool isNamed = std::find(geoDataObjects.begin(), geoDataObjects.end(), &objectRecord) != geoDataObjects.end();
    if (isNamed && itsClass->desc() != QeDbGeoData::desc())
        store->throwDamage(objectRecord.handle, "is not a GeoData object, but the header names it as one");
    std::unique_ptr<QeDbObject> object(itsClass->make());
    store->load(objectRecord, *object->imp().state);
    QeHost::attach(objectRecord, *object.release(), owner);
    objectRecord.isStored = false;
    if (objectRecord.object->isKindOf(QeDbSymbolTable::desc()))
        loadRecords(objectRecord);
}

/// The names of a table are those of its records. A table is there with all of them or not at all.
void QeDbDatabaseImp::loadRecords(QeDbObjectRecord& table)
{
    try {
        for (QeDbObjectRecord* const record : QeHost::stateOf<QeHost::SymbolTableState>(*table.object).records) {
            if (QeHost::loadObject(*record).imp().state->owner != &table)
                store->throwDamage(record->handle,
                                   "belongs to another table than " + Embedded::formatHandle(table.handle));
        }
    } catch (...) {
        delete table.object;
        table.isStored = true;
        throw;
    }
}

bool QeDbDatabaseImp::isIndispensable(const QeDbObjectRecord& objectRecord) const
{
    return isRoot(objectRecord) || &objectRecord == modelSpace;
}

QeDbObjectRecord* QeDbDatabaseImp::geoData() const
{
    const auto found = std::find_if(geoDataObjects.begin(), geoDataObjects.end(), QeHost::isLive);
    return found != geoDataObjects.end() ? *found : nullptr;
}

namespace QeHost {
namespace {

template <class T>
Qeapp::ErrorStatus openRoot(T*& object, ObjectRecord* root, QeDb::OpenMode mode, std::string_view call)
{
    object = nullptr;
    if (const auto injected = injectedFault(call, Qeapp::eOpenForWrite))
        return *injected;
    QeDbObject* opened = nullptr;
    const Qeapp::ErrorStatus status = catchStatus([&] {
        if (!loadObject(*root).isKindOf(T::desc()))
            root->database->store->throwDamage(root->handle, "is a root of another class");
        return openObject(opened, root, mode);
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
