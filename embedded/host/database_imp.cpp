#include "embedded/host/database_imp.h"

#include <algorithm>

#include "embedded/foundation/audit.h"
#include "embedded/host/heap.h"

using Embedded::Audit;
using Embedded::Held;

namespace QeHost {
namespace {

/// Of which the object knows nothing yet.
Stub& addStub(DatabaseImp& database, QeDbObject& object, Embedded::Handle handle)
{
    auto stub = std::make_unique<Stub>(
        Stub{.database = &database, .handle = handle, .object = &object, .position = database.stubs.size()});
    database.stubs.push_back(std::move(stub));
    return *database.stubs.back();
}

void attach(Stub& stub, Stub* owner)
{
    ObjectImp& imp = stub.object->imp();
    imp.stub = &stub;
    imp.state->owner = owner;
    Audit::remove(Held::detachedObject);
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
    std::erase(geoDataObjects, &stub);
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
    geoDataObjects.clear();
    waiting.clear();
}

Stub& DatabaseImp::adopt(QeDbObject& object, Stub* owner)
{
    Stub& stub = addStub(*this, object, nextHandle);
    try {
        transactions.recordCreation(stub);
    } catch (...) {
        stubs.pop_back();
        throw;
    }
    attach(stub, owner);
    ++nextHandle;
    object.imp().writing = true;
    object.imp().modified = false;
    Audit::add(Held::openObject);
    return stub;
}

Stub& DatabaseImp::place(QeDbObject& object, Stub* owner, Embedded::Handle handle)
{
    nextHandle = std::max(nextHandle, handle + 1);
    Stub& stub = addStub(*this, object, handle);
    attach(stub, owner);
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

bool DatabaseImp::isIndispensable(const Stub& stub) const
{
    return &stub == namedObjects || &stub == regAppTable || &stub == blockTable || &stub == modelSpace;
}

Stub* DatabaseImp::geoData() const
{
    const auto found = std::find_if(geoDataObjects.begin(), geoDataObjects.end(), isLive);
    return found != geoDataObjects.end() ? *found : nullptr;
}

} // namespace QeHost
