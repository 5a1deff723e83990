#include "embedded/host/database_imp.h"

#include <algorithm>

#include "embedded/foundation/audit.h"
#include "embedded/host/heap.h"

using Embedded::Audit;
using Embedded::Held;

namespace QeHost {
namespace {

Stub& addStub(DatabaseImp& database, QeDbObject& object, Stub* owner, Embedded::Handle handle)
{
    auto stub = std::make_unique<Stub>(Stub{&database, handle, &object, false});
    database.stubs.push_back(std::move(stub));
    Stub& added = *database.stubs.back();
    object.imp().stub = &added;
    object.imp().state->owner = owner;
    Audit::remove(Held::detachedObject);
    return added;
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

void DatabaseImp::clear()
{
    for (const std::unique_ptr<Stub>& stub : stubs)
        delete stub->object;
    stubs.clear();
    geoDataObjects.clear();
}

Stub& DatabaseImp::adopt(QeDbObject& object, Stub* owner)
{
    Stub& stub = addStub(*this, object, owner, nextHandle);
    transactions.recordCreation(stub);
    ++nextHandle;
    object.imp().writing = true;
    object.imp().modified = false;
    Audit::add(Held::openObject);
    return stub;
}

Stub& DatabaseImp::place(QeDbObject& object, Stub* owner, Embedded::Handle handle)
{
    nextHandle = std::max(nextHandle, handle + 1);
    return addStub(*this, object, owner, handle);
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
