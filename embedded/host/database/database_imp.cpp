#include "embedded/host/database/database_imp.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "embedded/base/text.h"
#include "embedded/diagnostics/resource_counters.h"
#include "embedded/host/database/drawing_refusal.h"
#include "embedded/host/database/heap.h"
#include "embedded/host/database/object_classes.h"
#include "platform/host/geodata.h"

using Embedded::Audit;
using Embedded::Held;

namespace QeHost {
namespace {

/// Of which no object knows yet.
Stub& addStub(DatabaseImp& database, Embedded::Handle handle)
{
    database.stubs.push_back(
        std::make_unique<Stub>(Stub{.database = &database, .handle = handle, .position = database.stubs.size()}));
    return *database.stubs.back();
}

void attach(Stub& stub, QeDbObject& object, Stub* owner)
{
    stub.object = &object;
    ObjectImp& imp = object.imp();
    imp.stub = &stub;
    imp.state->owner = owner;
    Audit::remove(Held::detachedObject);
}

std::string placeOf(const Stub& stub)
{
    return Embedded::placeOf(stub.handle);
}

std::string faultOfEntry(Embedded::Handle dictionary)
{
    return "does not belong to object " + Embedded::hexFromHandle(dictionary) + ", which lists it";
}

/// Why a stored object of the class may not have the owner, which is null for none; empty when it may.
std::string faultOfOwner(const DatabaseImp& database, const Stub& stub, const ObjectClass& itsClass, const Stub* owner)
{
    const bool isRoot = database.isRoot(stub);
    if (isRoot != (owner == nullptr))
        return isRoot ? "is a root and has an owner" : "has no owner";
    const bool fits = isRoot || (itsClass.owner != nullptr && owner->object->isKindOf(itsClass.owner()));
    if (!fits)
        return "cannot belong to object " + Embedded::hexFromHandle(owner->handle);
    const bool isListedByOwner = stub.listedBy == 0 || (!isRoot && stub.listedBy == owner->handle);
    return isListedByOwner ? "" : faultOfEntry(stub.listedBy);
}

} // namespace

DatabaseImp::DatabaseImp(QeDbDatabase& itself, QeDb::QeDbDwgVersion itsVersion) : database(itself), version(itsVersion)
{
}

// Opens that nobody ended and transactions that are still active stay in the audit: they are what a client forgot.
DatabaseImp::~DatabaseImp()
{
    clear();
}

void DatabaseImp::destroy(Stub& stub)
{
    if (stub.isInFile)
        leftBehind.insert(stub.handle);
    std::erase(geoDataObjects, &stub);
    if (const auto known = storedStubs.find(stub.handle); known != storedStubs.end() && known->second == &stub)
        storedStubs.erase(known);
    delete stub.object;
    const std::size_t position = stub.position;
    stubs.back()->position = position;
    std::swap(stubs[position], stubs.back());
    stubs.pop_back();
}

void DatabaseImp::clear()
{
    for (const std::unique_ptr<Stub>& stub : stubs) {
        stub->database = nullptr; // from here on a stub ends with its last id, this one
        ++stub->ids;
    }
    for (const std::unique_ptr<Stub>& stub : stubs)
        delete stub->object;
    for (std::unique_ptr<Stub>& stub : stubs)
        releaseId(*stub.release());
    stubs.clear();
    storedStubs.clear();
    geoDataObjects.clear();
    waiting.clear();
}

Stub& DatabaseImp::adopt(QeDbObject& object, Stub* owner)
{
    Stub& stub = addStub(*this, nextHandle);
    try {
        transactions.recordCreation(stub);
    } catch (...) {
        stubs.pop_back();
        throw;
    }
    attach(stub, object, owner);
    ++nextHandle;
    object.imp().writing = true;
    object.imp().modified = false;
    stub.isChanged = true;
    Audit::add(Held::openObject);
    return stub;
}

Stub& DatabaseImp::place(QeDbObject& object, Stub* owner, Embedded::Handle handle)
{
    nextHandle = std::max(nextHandle, handle + 1);
    Stub& stub = addStub(*this, handle);
    attach(stub, object, owner);
    stub.isChanged = true;
    return stub;
}

void DatabaseImp::createRoots()
{
    namedObjects = &place(*makeHostObject<QeDbDictionary>(), nullptr, nextHandle);
    regAppTable = &place(*makeHostObject<QeDbRegAppTable>(), nullptr, nextHandle);
    blockTable = &place(*makeHostObject<QeDbBlockTable>(), nullptr, nextHandle);
    modelSpace = &place(*makeHostObject<QeDbBlockTableRecord>(), blockTable, nextHandle);
    writableStateOf<SymbolRecordState>(*modelSpace->object).name = kQeDbModelSpaceName;
    writableStateOf<SymbolTableState>(*blockTable->object).records.push_back(modelSpace);
}

Stub& DatabaseImp::storedStub(Embedded::Handle handle)
{
    const auto [entry, isNew] = storedStubs.try_emplace(handle, nullptr);
    if (!isNew)
        return *entry->second;
    try {
        entry->second = &addStub(*this, handle);
    } catch (...) {
        storedStubs.erase(entry);
        throw;
    }
    entry->second->isStored = true;
    entry->second->isInFile = true;
    return *entry->second;
}

Stub& DatabaseImp::storedEntry(Embedded::Handle handle, const Stub& dictionary)
{
    Stub& entry = storedStub(handle);
    if (entry.object == nullptr && entry.listedBy == 0)
        entry.listedBy = dictionary.handle; // until it is loaded
    const Stub* const owner = entry.object != nullptr ? entry.object->imp().state->owner : nullptr;
    const Embedded::Handle itsOwner = entry.object == nullptr ? entry.listedBy : owner != nullptr ? owner->handle : 0;
    if (itsOwner != dictionary.handle)
        store->refuse(placeOf(entry) + faultOfEntry(dictionary.handle));
    return entry;
}

void DatabaseImp::load(Stub& stub)
{
    std::vector<std::pair<Stub*, StoredObject>> path; // up to the first owner that is there already, or a root
    std::unordered_set<const Stub*> known;
    for (Stub* next = &stub; next != nullptr && next->object == nullptr;) {
        if (!known.insert(next).second)
            store->refuse(placeOf(*next) + "belongs to itself, through its owners");
        if (!next->isStored)
            store->refuse(placeOf(*path.back().first) + "belongs to an object that is gone");
        path.emplace_back(next, store->look(next->handle));
        const Embedded::Handle owner = path.back().second.owner;
        next = owner != 0 ? &storedStub(owner) : nullptr;
    }
    for (auto each = path.rbegin(); each != path.rend(); ++each)
        loadBelow(*each->first, each->second);
}

/// Its owner is loaded.
void DatabaseImp::loadBelow(Stub& stub, const StoredObject& stored)
{
    if (stub.object != nullptr) // a table loads its records
        return;
    const ObjectClass* const itsClass = findClass(stored.className);
    if (itsClass == nullptr)
        store->refuse(placeOf(stub) + "is of an unknown class, " +
                      Embedded::excerpt(Embedded::utf8FromWide(stored.className)));
    Stub* const owner = stored.owner != 0 ? &storedStub(stored.owner) : nullptr;
    if (const std::string fault = faultOfOwner(*this, stub, *itsClass, owner); !fault.empty())
        store->refuse(placeOf(stub) + fault);
    const bool isNamed = std::find(geoDataObjects.begin(), geoDataObjects.end(), &stub) != geoDataObjects.end();
    if (isNamed && itsClass->desc() != QeDbGeoData::desc())
        store->refuse(placeOf(stub) + "is no GeoData, as which the header names it");
    std::unique_ptr<QeDbObject> object(itsClass->make());
    store->load(stub, *object->imp().state);
    attach(stub, *object.release(), owner);
    stub.isStored = false;
    if (stub.object->isKindOf(QeDbSymbolTable::desc()))
        loadRecords(stub);
}

/// The names of a table are those of its records. A table is there with all of them or not at all.
void DatabaseImp::loadRecords(Stub& table)
{
    try {
        for (Stub* const record : stateOf<SymbolTableState>(*table.object).records) {
            if (loaded(*record).imp().state->owner != &table)
                store->refuse(placeOf(*record) + "belongs to another table than " +
                              Embedded::hexFromHandle(table.handle));
        }
    } catch (...) {
        delete table.object;
        table.isStored = true;
        throw;
    }
}

bool DatabaseImp::isIndispensable(const Stub& stub) const
{
    return isRoot(stub) || &stub == modelSpace;
}

Stub* DatabaseImp::geoData() const
{
    const auto found = std::find_if(geoDataObjects.begin(), geoDataObjects.end(), isLive);
    return found != geoDataObjects.end() ? *found : nullptr;
}

} // namespace QeHost
