#include "embedded/diagnostics/resource_counters.h"
#include "embedded/host/database/database.h"
#include "embedded/host/database/injected_fault.h"
#include "embedded/host/database/object.h"
#include "embedded/host/database/object_store.h"
#include "embedded/host/database/unreachable_objects.h"

namespace QeHost {

bool isLive(const ObjectRecord* record)
{
    if (record == nullptr)
        return false;
    return record->object != nullptr ? !record->object->imp().state->erased : record->isStored;
}

Qeapp::ErrorStatus conflictOf(const ObjectRecord& record, QeDb::OpenMode mode)
{
    if (record.object == nullptr)
        return Qeapp::eOk;
    const ObjectImp& imp = record.object->imp();
    if (imp.writing)
        return Qeapp::eOpenForWrite;
    if (imp.readers > 0 && mode == QeDb::kForWrite)
        return Qeapp::eOpenForRead;
    return Qeapp::eOk;
}

QeDbObject& loaded(ObjectRecord& record)
{
    if (record.object == nullptr)
        record.database->load(record);
    return *record.object;
}

namespace {

Qeapp::ErrorStatus refusalToOpen(const ObjectRecord* record, QeDb::OpenMode mode, bool openErased)
{
    if (record == nullptr)
        return Qeapp::eNullObjectId;
    if (mode != QeDb::kForRead && mode != QeDb::kForWrite)
        return Qeapp::eNotApplicable;
    if (record->object == nullptr && !record->isStored)
        return Qeapp::eUnknownObjectId;
    if (record->undone || (!openErased && !isLive(record)))
        return Qeapp::eObjectErased;
    return conflictOf(*record, mode);
}

} // namespace

Qeapp::ErrorStatus openRecord(QeDbObject*& object, ObjectRecord* record, QeDb::OpenMode mode, bool openErased)
{
    object = nullptr;
    if (const Qeapp::ErrorStatus refusal = refusalToOpen(record, mode, openErased); refusal != Qeapp::eOk)
        return refusal;
    ObjectImp& imp = loaded(*record).imp();
    if (mode == QeDb::kForWrite)
        imp.writing = true;
    else
        ++imp.readers;
    Embedded::ResourceCounters::add(Embedded::ResourceKind::openObject);
    object = record->object;
    return Qeapp::eOk;
}

void releaseId(ObjectRecord& record)
{
    --record.ids;
    if (record.database != nullptr)
        collectIfUnreachable(record);
    else if (record.ids == 0)
        delete &record;
}

void prepareToWrite(ObjectImp& imp)
{
    if (imp.record != nullptr) {
        imp.record->database->transactions.recordWrite(*imp.record);
        imp.record->isChanged = true;
    }
    imp.modified = imp.modified || imp.writing; // the host itself also changes objects that nobody has open
}

} // namespace QeHost

void QeDbObjectId::retain() const
{
    if (record_ != nullptr)
        ++record_->ids;
}

void QeDbObjectId::release(QeHost::ObjectRecord& record)
{
    QeHost::releaseId(record);
}

std::uint64_t QeDbObjectId::handle() const
{
    return record_ != nullptr ? record_->handle : 0;
}

Qeapp::ErrorStatus qedbOpenQeDbObject(QeDbObject*& object, QeDbObjectId id, QeDb::OpenMode mode, bool openErased)
{
    object = nullptr;
    if (const auto fault = QeHost::injectedFault("qedbOpenQeDbObject", Qeapp::eOpenForWrite))
        return *fault;
    return QeHost::answered([&] { return QeHost::openRecord(object, id.record(), mode, openErased); });
}
