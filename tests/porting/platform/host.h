// The smallest CAD host that the module can be built against, without the project's own interfaces. It declares exactly
// what docs/porting.md lists, and a test compares the two.
#pragma once

#include <cstddef>
#include <cstdint>
#pragma GCC visibility push(default)

namespace Qeapp {
enum [[nodiscard]] ErrorStatus : int{eOk = 0,
                                     eNotApplicable = 2,
                                     eInvalidInput = 3,
                                     eOutOfMemory = 6,
                                     eInvalidResbuf = 7,
                                     eNoTransaction = 8,
                                     eNoObject = 15,
                                     eNullObjectId = 16,
                                     eObjectErased = 17,
                                     eKeyNotFound = 22,
                                     eNotThatKindOfClass = 26,
                                     eInvalidDrawingVersion = 37,
                                     eNoDatabase = 124,
                                     eVetoed = 325};
} // namespace Qeapp

namespace QeRb {
enum : int {
    kText = 300,
    kBinaryChunk = 310,
    kXdataString = 1000,
    kXdataAppName = 1001,
    kXdataControl = 1002,
    kXdataInteger32 = 1071,
    kListEnd = 5000
};
} // namespace QeRb

struct QeBinaryChunk {
    short clen;
    char* buf;
};

struct resbuf {
    resbuf* rbnext;
    short restype;
    union {
        std::int32_t rlong;
        wchar_t* rstring;
        QeBinaryChunk rbinary;
    } resval;
};

resbuf* qeutNewRb(int);
resbuf* qeutBuildList(int, ...);
void qeutRelRb(resbuf*);

Qeapp::ErrorStatus qeutNewString(const wchar_t*, wchar_t*&);
Qeapp::ErrorStatus qeutNewBuffer(unsigned char*&, std::size_t);
void qeutDelBuffer(wchar_t*&);
void* qeapp_malloc(std::size_t);

namespace QeRx {
enum : int { kRetOK = 0, kInitAppMsg = 1, kUnloadAppMsg = 2 };
} // namespace QeRx

struct QeRxClass;

struct QeRxObject {
    bool isKindOf(const QeRxClass*) const;
};
struct QeRxDynamicLinker : QeRxObject {
    static QeRxClass* desc();
    bool unlockApplication(void*);
};
struct QeRxDictionary {
    QeRxObject* at(const wchar_t*) const;
};
inline constexpr const wchar_t* kQeRxDynamicLinkerKey = L"DynamicLinker";
QeRxDictionary* qerxSysRegistry();
bool qerxRegisterAppMDIAware(void*);
namespace QeDb {
enum OpenMode : int { kForRead, kForWrite, kForNotify };
enum QeDbDwgVersion : int { kGeoDataTextDwg = 30 };
} // namespace QeDb

class QeDbDatabase;
class QeDbObjectId {
public:
    bool isNull() const;

private:
    void* stub_ = nullptr;
};
struct QeDbObjectReactor {};
struct QeDbObject {
    QeDbObjectId objectId() const;
    QeDbDatabase* database() const;
    void addReactor(QeDbObjectReactor*);
    Qeapp::ErrorStatus close();
    Qeapp::ErrorStatus upgradeOpen();
    resbuf* xData(const wchar_t*) const;
    Qeapp::ErrorStatus setXData(const resbuf*);
};
template <class T>
Qeapp::ErrorStatus qedbOpenObject(T*& object, QeDbObjectId, QeDb::OpenMode)
{
    object = nullptr;
    return Qeapp::eKeyNotFound;
}
struct QeDbDictionaryIterator {
    virtual ~QeDbDictionaryIterator();
    bool done() const;
    bool next();
    const wchar_t* name() const;
    QeDbObjectId objectId() const;
};
struct QeDbDictionary : QeDbObject {
    Qeapp::ErrorStatus getAt(const wchar_t*, QeDbObjectId&) const;
    Qeapp::ErrorStatus setAt(const wchar_t*, QeDbObject*, QeDbObjectId&);
    Qeapp::ErrorStatus remove(const wchar_t*, QeDbObjectId&);
    Qeapp::ErrorStatus remove(const wchar_t*);
    Qeapp::ErrorStatus remove(QeDbObjectId);
    bool has(const wchar_t*) const;
    unsigned numEntries() const;
    QeDbDictionaryIterator* newIterator() const;
};
struct QeDbXrecord : QeDbObject {
    Qeapp::ErrorStatus setFromRbChain(const resbuf*, QeDbDatabase*);
    Qeapp::ErrorStatus rbChain(resbuf*&, QeDbDatabase*) const;
};
struct QeDbXrecordIterator {
    explicit QeDbXrecordIterator(const QeDbXrecord*);
    bool done() const;
    short curResType() const;
};
struct QeDbRegAppTableRecord : QeDbObject {
    Qeapp::ErrorStatus setName(const wchar_t*);
};
struct QeDbRegAppTable : QeDbObject {
    bool has(const wchar_t*) const;
    Qeapp::ErrorStatus add(QeDbObjectId&, QeDbRegAppTableRecord*);
};
struct QeDbGeoData : QeDbObject {
    const wchar_t* coordinateSystem() const;
    Qeapp::ErrorStatus setCoordinateSystem(const wchar_t*);
    Qeapp::ErrorStatus setBlockTableRecordId(QeDbObjectId);
    Qeapp::ErrorStatus postToDb(QeDbObjectId&);
};
Qeapp::ErrorStatus qedbGetGeoDataObjId(QeDbDatabase*, QeDbObjectId&);
struct QeDbSymbolUtilitiesServices {
    Qeapp::ErrorStatus blockModelSpaceId(QeDbDatabase*, QeDbObjectId&) const;
};
const QeDbSymbolUtilitiesServices* qedbSymUtil();
struct QeDbTransaction;
struct QeDbTransactionManager {
    QeDbTransaction* startTransaction();
    Qeapp::ErrorStatus endTransaction();
    Qeapp::ErrorStatus abortTransaction();
};
class QeDbDatabase {
public:
    Qeapp::ErrorStatus getNamedObjectsDictionary(QeDbDictionary*&, QeDb::OpenMode);
    Qeapp::ErrorStatus getRegAppTable(QeDbRegAppTable*&, QeDb::OpenMode);
    QeDbTransactionManager* transactionManager() const;
};
struct QeDbHostApplicationServices {
    QeDbDatabase* workingDatabase() const;
    const wchar_t* getUserRegistryProductRootKey() const;
};
QeDbHostApplicationServices* qedbHostApplicationServices();
namespace QeAp {
enum : int { kWrite = 4 };
} // namespace QeAp
struct QeApDocument {};
struct QeApDocManager {
    QeApDocument* curDocument() const;
    Qeapp::ErrorStatus lockDocument(QeApDocument*, int, const wchar_t*, const wchar_t*, bool);
    Qeapp::ErrorStatus unlockDocument(QeApDocument*);
};
QeApDocManager* qeDocManager();
struct QeDbSaveErrorRecorder {
    Qeapp::ErrorStatus recordError(Qeapp::ErrorStatus);
};
struct QeDbSaveErrorMessageRecorder {
    Qeapp::ErrorStatus recordError(Qeapp::ErrorStatus, const wchar_t*);
};
struct QeDbDecompositionReactor {
    virtual Qeapp::ErrorStatus decomposeForSave(QeDbDatabase*, QeDb::QeDbDwgVersion, QeDbSaveErrorRecorder*,
                                                QeDbSaveErrorMessageRecorder*);

protected:
    ~QeDbDecompositionReactor() = default;
};
struct QeDbDecompositionManager {
    Qeapp::ErrorStatus addReactor(QeDbDecompositionReactor*);
    Qeapp::ErrorStatus removeReactor(QeDbDecompositionReactor*);
};
QeDbDecompositionManager* qedbGetDecompositionManager();
#pragma GCC visibility pop
