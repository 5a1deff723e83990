// A host that is sufficient to link and load the module. It has the services that the module relies on, but no drawing
// and no memory. All other calls fail, as those of a host may.
#include "platform/host.h"

#include <cwchar>

#include "stub_record.h"

namespace {

using Qeapp::eInvalidInput;
using Qeapp::eKeyNotFound;
using Qeapp::eOutOfMemory;

} // namespace

StubRecord& stubRecord()
{
    static StubRecord record;
    return record;
}

// The runtime.

class QeRxClass {};

bool QeRxObject::isKindOf(const QeRxClass* ancestor) const
{
    return ancestor == QeRxDynamicLinker::desc(); // the linker is the only object
}

QeRxClass* QeRxDynamicLinker::desc()
{
    static QeRxClass descriptor;
    return &descriptor;
}

bool QeRxDynamicLinker::unlockApplication(void* appHandle)
{
    stubRecord().unlocked = appHandle;
    return true;
}

QeRxObject* QeRxDictionary::at(const wchar_t* key) const
{
    static QeRxDynamicLinker linker;
    return std::wcscmp(key, kQeRxDynamicLinkerKey) == 0 ? &linker : nullptr;
}

QeRxDictionary* qerxSysRegistry()
{
    static QeRxDictionary registry;
    return &registry;
}

bool qerxRegisterAppMDIAware(void* appHandle)
{
    stubRecord().registered = appHandle;
    return true;
}

// Decomposition.

Qeapp::ErrorStatus QeDbSaveErrorRecorder::recordError(Qeapp::ErrorStatus code)
{
    return code;
}
Qeapp::ErrorStatus QeDbSaveErrorMessageRecorder::recordError(Qeapp::ErrorStatus code, const wchar_t*)
{
    return code;
}

Qeapp::ErrorStatus QeDbDecompositionManager::addReactor(QeDbDecompositionReactor* reactor)
{
    stubRecord().reactor = reactor;
    return Qeapp::eOk;
}

Qeapp::ErrorStatus QeDbDecompositionManager::removeReactor(QeDbDecompositionReactor* reactor)
{
    if (stubRecord().reactor != reactor)
        return eKeyNotFound;
    stubRecord().reactor = nullptr;
    return Qeapp::eOk;
}

QeDbDecompositionManager* qedbGetDecompositionManager()
{
    static QeDbDecompositionManager manager;
    return &manager;
}

QeDbDatabase* QeDbHostApplicationServices::workingDatabase() const
{
    return nullptr;
}
QeDbHostApplicationServices* qedbHostApplicationServices()
{
    static QeDbHostApplicationServices services;
    return &services;
}

// Memory and resbufs.

resbuf* qeutNewRb(int)
{
    return nullptr;
}
resbuf* qeutBuildList(int, ...)
{
    return nullptr;
}
void qeutRelRb(resbuf*)
{
}
Qeapp::ErrorStatus qeutNewString(const wchar_t*, wchar_t*& copy)
{
    copy = nullptr;
    return eOutOfMemory;
}
Qeapp::ErrorStatus qeutNewBuffer(unsigned char*& buffer, std::size_t)
{
    buffer = nullptr;
    return eOutOfMemory;
}
void qeutDelBuffer(wchar_t*& text)
{
    text = nullptr;
}
void qeutDelBuffer(unsigned char*& buffer)
{
    buffer = nullptr;
}
void* qeapp_malloc(std::size_t)
{
    return nullptr;
}

// Drawings.

bool QeDbObjectId::isNull() const
{
    return record_ == nullptr;
}

QeDbObjectId QeDbObject::objectId() const
{
    return {};
}
Qeapp::ErrorStatus QeDbObject::close()
{
    return eInvalidInput;
}
Qeapp::ErrorStatus QeDbObject::upgradeOpen()
{
    return eInvalidInput;
}
resbuf* QeDbObject::xData(const wchar_t*) const
{
    return nullptr;
}
Qeapp::ErrorStatus QeDbObject::setXData(const resbuf*)
{
    return eInvalidInput;
}

Qeapp::ErrorStatus QeDbDictionary::getAt(const wchar_t*, QeDbObjectId& id) const
{
    id = QeDbObjectId();
    return eKeyNotFound;
}
Qeapp::ErrorStatus QeDbDictionary::setAt(const wchar_t*, QeDbObject*, QeDbObjectId&)
{
    return eInvalidInput;
}
Qeapp::ErrorStatus QeDbDictionary::remove(const wchar_t*, QeDbObjectId&)
{
    return eKeyNotFound;
}

Qeapp::ErrorStatus QeDbXrecord::setFromRbChain(const resbuf*, QeDbDatabase*)
{
    return eInvalidInput;
}
Qeapp::ErrorStatus QeDbXrecord::rbChain(resbuf*& chain, QeDbDatabase*) const
{
    chain = nullptr;
    return eInvalidInput;
}

QeDbXrecordIterator::QeDbXrecordIterator(const QeDbXrecord*)
{
}
bool QeDbXrecordIterator::done() const
{
    return true;
}
short QeDbXrecordIterator::curResType() const
{
    return -1;
}

Qeapp::ErrorStatus QeDbRegAppTableRecord::setName(const wchar_t*)
{
    return eInvalidInput;
}
bool QeDbRegAppTable::has(const wchar_t*) const
{
    return false;
}
Qeapp::ErrorStatus QeDbRegAppTable::add(QeDbObjectId&, QeDbRegAppTableRecord*)
{
    return eInvalidInput;
}

const wchar_t* QeDbGeoData::coordinateSystem() const
{
    return L"";
}
Qeapp::ErrorStatus QeDbGeoData::setCoordinateSystem(const wchar_t*)
{
    return eInvalidInput;
}
Qeapp::ErrorStatus QeDbGeoData::setBlockTableRecordId(QeDbObjectId)
{
    return eInvalidInput;
}
Qeapp::ErrorStatus QeDbGeoData::postToDb(QeDbObjectId&)
{
    return eInvalidInput;
}
Qeapp::ErrorStatus qedbGetGeoDataObjId(QeDbDatabase*, QeDbObjectId& id)
{
    id = QeDbObjectId();
    return eKeyNotFound;
}

Qeapp::ErrorStatus QeDbSymbolUtilitiesServices::blockModelSpaceId(QeDbDatabase*, QeDbObjectId& id) const
{
    id = QeDbObjectId();
    return eInvalidInput;
}
const QeDbSymbolUtilitiesServices* qedbSymUtil()
{
    static const QeDbSymbolUtilitiesServices services;
    return &services;
}

QeDbTransaction* QeDbTransactionManager::startTransaction()
{
    return nullptr;
}
Qeapp::ErrorStatus QeDbTransactionManager::endTransaction()
{
    return Qeapp::eNoTransaction;
}
Qeapp::ErrorStatus QeDbTransactionManager::abortTransaction()
{
    return Qeapp::eNoTransaction;
}

Qeapp::ErrorStatus QeDbDatabase::getNamedObjectsDictionary(QeDbDictionary*& dictionary, QeDb::OpenMode)
{
    dictionary = nullptr;
    return eInvalidInput;
}
Qeapp::ErrorStatus QeDbDatabase::getRegAppTable(QeDbRegAppTable*& table, QeDb::OpenMode)
{
    table = nullptr;
    return eInvalidInput;
}
QeDbTransactionManager* QeDbDatabase::transactionManager() const
{
    return nullptr;
}

QeDbDatabase* QeDbObject::database() const
{
    return nullptr;
}
void QeDbObject::addReactor(QeDbObjectReactor*)
{
}

QeDbDictionaryIterator::~QeDbDictionaryIterator() = default;
bool QeDbDictionaryIterator::done() const
{
    return true;
}
bool QeDbDictionaryIterator::next()
{
    return false;
}
const wchar_t* QeDbDictionaryIterator::name() const
{
    return L"";
}
QeDbObjectId QeDbDictionaryIterator::objectId() const
{
    return {};
}
Qeapp::ErrorStatus QeDbDictionary::remove(const wchar_t*)
{
    return eKeyNotFound;
}
Qeapp::ErrorStatus QeDbDictionary::remove(QeDbObjectId)
{
    return eKeyNotFound;
}
bool QeDbDictionary::has(const wchar_t*) const
{
    return false;
}
std::uint32_t QeDbDictionary::numEntries() const
{
    return 0;
}
QeDbDictionaryIterator* QeDbDictionary::newIterator() const
{
    return nullptr;
}

const wchar_t* QeDbHostApplicationServices::getUserRegistryProductRootKey() const
{
    return L"";
}

QeApDocManager* qeDocManager()
{
    return nullptr;
}
QeApDocument* QeApDocManager::curDocument() const
{
    return nullptr;
}
Qeapp::ErrorStatus QeApDocManager::lockDocument(QeApDocument*, QeAp::DocLockMode, const wchar_t*, const wchar_t*, bool)
{
    return eInvalidInput;
}
Qeapp::ErrorStatus QeApDocManager::unlockDocument(QeApDocument*)
{
    return eInvalidInput;
}
