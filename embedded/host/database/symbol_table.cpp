#include "embedded/host/database/symbol_table.h"

#include <algorithm>

#include "embedded/base/case_folding.h"
#include "embedded/host/database/database.h"
#include "embedded/host/database/injected_fault.h"
#include "platform/host/database.h"
#include "platform/host/symbol_table.h"

namespace QeHost {

const std::wstring& recordName(const ObjectRecord& record)
{
    return stateOf<SymbolRecordState>(*record.object).name;
}

ObjectRecord* findRecord(const ObjectRecord& table, std::wstring_view name)
{
    const auto& records = stateOf<SymbolTableState>(*table.object).records;
    const auto found = std::find_if(records.begin(), records.end(), [name](const ObjectRecord* record) {
        return record->object != nullptr && isLive(record) &&
               Embedded::equalsIgnoringAsciiCase(recordName(*record), name);
    });
    return found != records.end() ? *found : nullptr;
}

namespace {

/// Returns whether the record may not get the name because its table has it already.
bool isNameUsedByOther(const ObjectRecord& record, std::wstring_view name)
{
    const ObjectRecord* table = record.object->imp().state->owner;
    const ObjectRecord* holder = findRecord(*table, name);
    return holder != nullptr && holder != &record;
}

Qeapp::ErrorStatus checkRename(const ObjectImp& imp, const wchar_t* name)
{
    if (!imp.canWrite())
        return Qeapp::eNotOpenForWrite;
    if (name == nullptr || *name == L'\0')
        return Qeapp::eInvalidInput;
    if (imp.record == nullptr)
        return Qeapp::eOk;
    if (imp.record->database->isIndispensable(*imp.record))
        return Qeapp::eNotApplicable;
    return isNameUsedByOther(*imp.record, name) ? Qeapp::eDuplicateKey : Qeapp::eOk;
}

Qeapp::ErrorStatus checkAdd(const ObjectImp& table, const QeDbSymbolTableRecord* record)
{
    if (table.record == nullptr)
        return Qeapp::eNotInDatabase;
    if (!table.canWrite())
        return Qeapp::eNotOpenForWrite;
    if (record == nullptr)
        return Qeapp::eInvalidInput;
    if (record->imp().record != nullptr)
        return Qeapp::eAlreadyInDatabase;
    const std::wstring& name = stateOf<SymbolRecordState>(*record).name;
    if (name.empty())
        return Qeapp::eInvalidKey;
    return findRecord(*table.record, name) != nullptr ? Qeapp::eDuplicateKey : Qeapp::eOk;
}

} // namespace

bool hasNamesake(const ObjectRecord& record)
{
    return isNameUsedByOther(record, recordName(record));
}

} // namespace QeHost

QeRxClass* QeDbSymbolTableRecord::desc()
{
    static QeRxClass descriptor(L"QeDbSymbolTableRecord", QeDbObject::desc());
    return &descriptor;
}

QeRxClass* QeDbSymbolTableRecord::isA() const
{
    return desc();
}

Qeapp::ErrorStatus QeDbSymbolTableRecord::setName(const wchar_t* name)
{
    if (const auto injected = QeHost::injectedFault("QeDbSymbolTableRecord::setName"))
        return *injected;
    if (const Qeapp::ErrorStatus status = QeHost::checkRename(imp(), name); status != Qeapp::eOk)
        return status;
    QeHost::writableStateOf<QeHost::SymbolRecordState>(*this).name = name;
    return Qeapp::eOk;
}

const wchar_t* QeDbSymbolTableRecord::getName() const
{
    return QeHost::stateOf<QeHost::SymbolRecordState>(*this).name.c_str();
}

QeRxClass* QeDbSymbolTable::desc()
{
    static QeRxClass descriptor(L"QeDbSymbolTable", QeDbObject::desc());
    return &descriptor;
}

QeRxClass* QeDbSymbolTable::isA() const
{
    return desc();
}

bool QeDbSymbolTable::has(const wchar_t* name) const
{
    return name != nullptr && imp().record != nullptr && imp().canRead() &&
           QeHost::findRecord(*imp().record, name) != nullptr;
}

Qeapp::ErrorStatus QeDbSymbolTable::getAt(const wchar_t* name, QeDbObjectId& id) const
{
    id.setNull();
    if (const auto injected = QeHost::injectedFault("QeDbSymbolTable::getAt", Qeapp::eKeyNotFound))
        return *injected;
    if (name == nullptr)
        return Qeapp::eInvalidKey;
    if (!imp().canRead())
        return Qeapp::eNotOpenForRead;
    if (imp().record != nullptr)
        id = QeDbObjectId(QeHost::findRecord(*imp().record, name));
    return id.isNull() ? Qeapp::eKeyNotFound : Qeapp::eOk;
}

Qeapp::ErrorStatus QeDbSymbolTable::addRecord(QeDbObjectId& id, QeDbSymbolTableRecord* record)
{
    id.setNull();
    const bool holdsBlocks = isKindOf(QeDbBlockTable::desc());
    if (const auto injected = QeHost::injectedFault(holdsBlocks ? "QeDbBlockTable::add" : "QeDbRegAppTable::add"))
        return *injected;
    if (const Qeapp::ErrorStatus status = QeHost::checkAdd(imp(), record); status != Qeapp::eOk)
        return status;
    auto& records = QeHost::writableStateOf<QeHost::SymbolTableState>(*this).records;
    QeHost::reserveOneMore(records);
    QeHost::ObjectRecord& objectRecord = imp().record->database->adopt(*record, imp().record);
    records.push_back(&objectRecord);
    id = QeDbObjectId(&objectRecord);
    return Qeapp::eOk;
}

QeRxClass* QeDbRegAppTableRecord::desc()
{
    static QeRxClass descriptor(L"QeDbRegAppTableRecord", QeDbSymbolTableRecord::desc());
    return &descriptor;
}

QeRxClass* QeDbRegAppTableRecord::isA() const
{
    return desc();
}

QeDbRegAppTableRecord::QeDbRegAppTableRecord() : QeDbSymbolTableRecord(new QeHost::SymbolRecordState)
{
}

QeRxClass* QeDbRegAppTable::desc()
{
    static QeRxClass descriptor(L"QeDbRegAppTable", QeDbSymbolTable::desc());
    return &descriptor;
}

QeRxClass* QeDbRegAppTable::isA() const
{
    return desc();
}

QeDbRegAppTable::QeDbRegAppTable() : QeDbSymbolTable(new QeHost::SymbolTableState)
{
}

QeRxClass* QeDbBlockTableRecord::desc()
{
    static QeRxClass descriptor(L"QeDbBlockTableRecord", QeDbSymbolTableRecord::desc());
    return &descriptor;
}

QeRxClass* QeDbBlockTableRecord::isA() const
{
    return desc();
}

QeDbBlockTableRecord::QeDbBlockTableRecord() : QeDbSymbolTableRecord(new QeHost::SymbolRecordState)
{
}

QeRxClass* QeDbBlockTable::desc()
{
    static QeRxClass descriptor(L"QeDbBlockTable", QeDbSymbolTable::desc());
    return &descriptor;
}

QeRxClass* QeDbBlockTable::isA() const
{
    return desc();
}

QeDbBlockTable::QeDbBlockTable() : QeDbSymbolTable(new QeHost::SymbolTableState)
{
}

Qeapp::ErrorStatus QeDbSymbolUtilitiesServices::blockModelSpaceId(QeDbDatabase* database, QeDbObjectId& id) const
{
    id.setNull();
    if (const auto injected =
            QeHost::injectedFault("QeDbSymbolUtilitiesServices::blockModelSpaceId", Qeapp::eKeyNotFound))
        return *injected;
    if (database == nullptr)
        return Qeapp::eInvalidInput;
    id = QeDbObjectId(database->imp().modelSpace);
    return Qeapp::eOk;
}

const QeDbSymbolUtilitiesServices* qedbSymUtil()
{
    static const QeDbSymbolUtilitiesServices services;
    return &services;
}
