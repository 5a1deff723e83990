#include "embedded/diagnostics/resource_counters.h"
#include "embedded/host/database/database_imp.h"
#include "embedded/host/database/fault.h"
#include "embedded/host/database/object_imp.h"
#include "embedded/host/database/object_store.h"
#include "embedded/host/database/unreachable_objects.h"

namespace QeHost {

bool isLive(const Stub* stub)
{
    if (stub == nullptr)
        return false;
    return stub->object != nullptr ? !stub->object->imp().state->erased : stub->isStored;
}

Qeapp::ErrorStatus conflictOf(const Stub& stub, QeDb::OpenMode mode)
{
    if (stub.object == nullptr)
        return Qeapp::eOk;
    const ObjectImp& imp = stub.object->imp();
    if (imp.writing)
        return Qeapp::eOpenForWrite;
    if (imp.readers > 0 && mode == QeDb::kForWrite)
        return Qeapp::eOpenForRead;
    return Qeapp::eOk;
}

QeDbObject& loaded(Stub& stub)
{
    if (stub.object == nullptr)
        stub.database->load(stub);
    return *stub.object;
}

namespace {

Qeapp::ErrorStatus refusalToOpen(const Stub* stub, QeDb::OpenMode mode, bool openErased)
{
    if (stub == nullptr)
        return Qeapp::eNullObjectId;
    if (mode != QeDb::kForRead && mode != QeDb::kForWrite)
        return Qeapp::eNotApplicable;
    if (stub->object == nullptr && !stub->isStored)
        return Qeapp::eUnknownObjectId;
    if (stub->undone || (!openErased && !isLive(stub)))
        return Qeapp::eObjectErased;
    return conflictOf(*stub, mode);
}

} // namespace

Qeapp::ErrorStatus openStub(QeDbObject*& object, Stub* stub, QeDb::OpenMode mode, bool openErased)
{
    object = nullptr;
    if (const Qeapp::ErrorStatus refusal = refusalToOpen(stub, mode, openErased); refusal != Qeapp::eOk)
        return refusal;
    ObjectImp& imp = loaded(*stub).imp();
    if (mode == QeDb::kForWrite)
        imp.writing = true;
    else
        ++imp.readers;
    Embedded::Audit::add(Embedded::Held::openObject);
    object = stub->object;
    return Qeapp::eOk;
}

void releaseId(Stub& stub)
{
    --stub.ids;
    if (stub.database != nullptr)
        destroyIfLost(stub);
    else if (stub.ids == 0)
        delete &stub;
}

void prepareToWrite(ObjectImp& imp)
{
    if (imp.stub != nullptr) {
        imp.stub->database->transactions.recordWrite(*imp.stub);
        imp.stub->isChanged = true;
    }
    imp.modified = imp.modified || imp.writing; // the host itself also changes objects that nobody has open
}

} // namespace QeHost

void QeDbObjectId::retain() const
{
    if (stub_ != nullptr)
        ++stub_->ids;
}

void QeDbObjectId::release(QeHost::Stub& stub)
{
    QeHost::releaseId(stub);
}

std::uint64_t QeDbObjectId::handle() const
{
    return stub_ != nullptr ? stub_->handle : 0;
}

Qeapp::ErrorStatus qedbOpenQeDbObject(QeDbObject*& object, QeDbObjectId id, QeDb::OpenMode mode, bool openErased)
{
    object = nullptr;
    if (const auto fault = QeHost::faultOf("qedbOpenQeDbObject", Qeapp::eOpenForWrite))
        return *fault;
    return QeHost::answered([&] { return QeHost::openStub(object, id.stub(), mode, openErased); });
}
