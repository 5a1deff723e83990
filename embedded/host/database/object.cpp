#include "embedded/host/database/object.h"

#include <algorithm>
#include <utility>

#include "embedded/diagnostics/resource_counters.h"
#include "embedded/host/database/database.h"
#include "embedded/host/database/injected_fault.h"
#include "embedded/host/database/symbol_table.h"
#include "embedded/host/database/unreachable_objects.h"
#include "platform/host/geodata.h"
#include "platform/host/memory.h"

using Embedded::ResourceCounters;
using Embedded::ResourceKind;

namespace QeHost {

bool isLive(const ObjectRecord* record)
{
    if (record == nullptr)
        return false;
    return record->object != nullptr ? !record->object->imp().state->erased : record->isStored;
}

Qeapp::ErrorStatus checkConflict(const ObjectRecord& record, QeDb::OpenMode mode)
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

QeDbObject& loadObject(ObjectRecord& record)
{
    if (record.object == nullptr)
        record.database->load(record);
    return *record.object;
}

namespace {

Qeapp::ErrorStatus checkOpen(const ObjectRecord* record, QeDb::OpenMode mode, bool openErased)
{
    if (record == nullptr)
        return Qeapp::eNullObjectId;
    if (mode != QeDb::kForRead && mode != QeDb::kForWrite)
        return Qeapp::eNotApplicable;
    if (record->object == nullptr && !record->isStored)
        return Qeapp::eUnknownObjectId;
    if (record->undone || (!openErased && !isLive(record)))
        return Qeapp::eObjectErased;
    return checkConflict(*record, mode);
}

} // namespace

Qeapp::ErrorStatus openObject(QeDbObject*& object, ObjectRecord* record, QeDb::OpenMode mode, bool openErased)
{
    object = nullptr;
    if (const Qeapp::ErrorStatus status = checkOpen(record, mode, openErased); status != Qeapp::eOk)
        return status;
    ObjectImp& imp = loadObject(*record).imp();
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

namespace {

bool isRegistered(const ObjectImp& imp, const QeDbObjectReactor* reactor)
{
    return std::find(imp.reactors.begin(), imp.reactors.end(), reactor) != imp.reactors.end();
}

/// Uses a copy of the list: a reactor may add or remove reactors.
template <class Notice>
void tellReactors(const QeDbObject& object, Notice notice)
{
    const std::vector<QeDbObjectReactor*> reactors = object.imp().reactors;
    for (QeDbObjectReactor* reactor : reactors) {
        if (isRegistered(object.imp(), reactor))
            notice(*reactor);
    }
}

} // namespace

void notifyModified(const QeDbObject& object)
{
    tellReactors(object, [&](QeDbObjectReactor& reactor) { reactor.modified(&object); });
}

void notifyErased(const QeDbObject& object, bool erasing)
{
    tellReactors(object, [&](QeDbObjectReactor& reactor) { reactor.erased(&object, erasing); });
}

namespace {

/// Notifies the reactors while the object can still be queried, and ends the opening for write.
void endWriting(const QeDbObject& object)
{
    ObjectImp& imp = object.imp();
    if (std::exchange(imp.modified, false))
        notifyModified(object);
    imp.writing = false;
}

/// An object that comes back must not collide with what took its place meanwhile.
Qeapp::ErrorStatus checkUnerase(const QeDbObject& object)
{
    const ObjectRecord& record = *object.imp().record;
    if (record.undone)
        return Qeapp::eObjectErased;
    if (object.isKindOf(QeDbGeoData::desc()) && record.database->geoData() != nullptr)
        return Qeapp::eDuplicateKey;
    if (object.isKindOf(QeDbSymbolTableRecord::desc()) && hasNamesake(record))
        return Qeapp::eDuplicateKey;
    return Qeapp::eOk;
}

Qeapp::ErrorStatus checkErase(const QeDbObject& object, bool erasing)
{
    const ObjectImp& imp = object.imp();
    if (imp.record == nullptr)
        return Qeapp::eNotInDatabase;
    if (!imp.canWrite())
        return Qeapp::eNotOpenForWrite;
    if (!erasing)
        return checkUnerase(object);
    return imp.record->database->isIndispensable(*imp.record) ? Qeapp::eNotApplicable : Qeapp::eOk;
}

} // namespace
} // namespace QeHost

QeRxClass* QeDbObject::desc()
{
    static QeRxClass descriptor(L"QeDbObject", QeRxObject::desc());
    return &descriptor;
}

QeRxClass* QeDbObject::isA() const
{
    return desc();
}

QeDbObject::QeDbObject(QeHost::ObjectState* state) : imp_(nullptr)
{
    std::unique_ptr<QeHost::ObjectState> owned(state);
    imp_ = new QeHost::ObjectImp;
    imp_->state = std::move(owned);
    ResourceCounters::add(ResourceKind::detachedObject);
}

QeDbObject::~QeDbObject()
{
    if (imp_->record == nullptr)
        ResourceCounters::remove(ResourceKind::detachedObject);
    else
        imp_->record->object = nullptr;
    ResourceCounters::remove(ResourceKind::objectReactor, static_cast<long>(imp_->reactors.size()));
    delete imp_;
}

QeDbObjectId QeDbObject::objectId() const
{
    return QeDbObjectId(imp_->record);
}

QeDbObjectId QeDbObject::ownerId() const
{
    return QeDbObjectId(imp_->state->owner);
}

QeDbDatabase* QeDbObject::database() const
{
    return imp_->record != nullptr ? &imp_->record->database->database : nullptr;
}

Qeapp::ErrorStatus QeDbObject::close()
{
    if (imp_->record == nullptr)
        return Qeapp::eNotInDatabase;
    if (imp_->writing)
        QeHost::endWriting(*this);
    else if (imp_->readers > 0)
        --imp_->readers;
    else
        return Qeapp::eNotOpenForRead;
    ResourceCounters::remove(ResourceKind::openObject);
    QeHost::collectIfUnreachable(*imp_->record); // perhaps this object
    return Qeapp::eOk;
}

Qeapp::ErrorStatus QeDbObject::upgradeOpen()
{
    if (const auto injected = QeHost::injectedFault("QeDbObject::upgradeOpen", Qeapp::eOpenForRead))
        return *injected;
    if (imp_->record == nullptr)
        return Qeapp::eNotInDatabase;
    if (imp_->writing)
        return Qeapp::eOpenForWrite;
    if (imp_->readers == 0)
        return Qeapp::eNotOpenForRead;
    if (imp_->readers > 1)
        return Qeapp::eOpenForRead;
    imp_->readers = 0;
    imp_->writing = true;
    return Qeapp::eOk;
}

Qeapp::ErrorStatus QeDbObject::downgradeOpen()
{
    if (const auto injected = QeHost::injectedFault("QeDbObject::downgradeOpen"))
        return *injected;
    if (imp_->record == nullptr)
        return Qeapp::eNotInDatabase;
    if (!imp_->writing)
        return Qeapp::eNotOpenForWrite;
    QeHost::endWriting(*this);
    imp_->readers = 1;
    return Qeapp::eOk;
}

Qeapp::ErrorStatus QeDbObject::erase(bool erasing)
{
    if (const auto injected = QeHost::injectedFault("QeDbObject::erase"))
        return *injected;
    if (imp_->record != nullptr && imp_->writing && imp_->state->erased == erasing && !imp_->record->undone)
        return Qeapp::eOk;
    if (const Qeapp::ErrorStatus status = QeHost::checkErase(*this, erasing); status != Qeapp::eOk)
        return status;
    QeHost::writableStateOf<QeHost::ObjectState>(*this).erased = erasing;
    QeHost::notifyErased(*this, erasing);
    return Qeapp::eOk;
}

bool QeDbObject::isErased() const
{
    return imp_->state->erased;
}

bool QeDbObject::isReadEnabled() const
{
    return imp_->canRead();
}

bool QeDbObject::isWriteEnabled() const
{
    return imp_->canWrite();
}

void* QeDbObject::operator new(std::size_t size)
{
    void* memory = qeHeapAlloc(size);
    if (memory == nullptr)
        throw std::bad_alloc();
    return memory;
}

void* QeDbObject::operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept
{
    return qeHeapAlloc(size);
}

void QeDbObject::operator delete(void* memory) noexcept
{
    qeHeapFree(memory);
}

void QeDbObject::operator delete(void* memory, const std::nothrow_t& /*tag*/) noexcept
{
    qeHeapFree(memory);
}

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
    if (const auto injected = QeHost::injectedFault("qedbOpenQeDbObject", Qeapp::eOpenForWrite))
        return *injected;
    return QeHost::catchStatus([&] { return QeHost::openObject(object, id.record(), mode, openErased); });
}

QeDbObjectReactor::~QeDbObjectReactor() = default;

void QeDbObjectReactor::modified(const QeDbObject* /*object*/)
{
}

void QeDbObjectReactor::erased(const QeDbObject* /*object*/, bool /*erasing*/)
{
}

void QeDbObject::addReactor(QeDbObjectReactor* reactor)
{
    if (reactor == nullptr || QeHost::isRegistered(*imp_, reactor))
        return;
    imp_->reactors.push_back(reactor);
    Embedded::ResourceCounters::add(Embedded::ResourceKind::objectReactor);
}

void QeDbObject::removeReactor(QeDbObjectReactor* reactor)
{
    const auto removed = std::erase(imp_->reactors, reactor);
    Embedded::ResourceCounters::remove(Embedded::ResourceKind::objectReactor, static_cast<long>(removed));
}
