// The strictest CAD host that the module can be built against: it declares what docs/porting.md lists and nothing more.
// Results must not be discarded, enumerations are scoped where they may be, nothing is virtual or public that need not
// be, and no object but an id is copied.
#pragma once

#include <cstddef>
#include <cstdint>

#if !defined(_WIN32)
#pragma GCC visibility push(default)
#endif

namespace Qeapp {
enum class [[nodiscard]] ErrorStatus : std::int64_t{eOk = 0,
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
using enum ErrorStatus;
} // namespace Qeapp

/// Base of classes whose objects are not copied.
class NotCopied {
public:
    NotCopied(const NotCopied&) = delete;
    NotCopied& operator=(const NotCopied&) = delete;

protected:
    NotCopied() = default;
    ~NotCopied() = default;
};

[[nodiscard]] Qeapp::ErrorStatus qeutNewString(const wchar_t* source, wchar_t*& copy);
[[nodiscard]] Qeapp::ErrorStatus qeutNewBuffer(unsigned char*& buffer, std::size_t lengthInBytes);
void qeutDelBuffer(wchar_t*& text);
void qeutDelBuffer(unsigned char*& buffer);
[[nodiscard]] void* qeapp_malloc(std::size_t lengthInBytes);

namespace QeRb {
enum GroupCode : int {
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

[[nodiscard]] resbuf* qeutNewRb(int groupCode);
[[nodiscard]] resbuf* qeutBuildList(int groupCode, ...);
void qeutRelRb(resbuf* chain);

namespace QeRx {
enum EntryPointCode : int { kRetOK = 0, kInitAppMsg = 1, kUnloadAppMsg = 2 };
} // namespace QeRx

class QeRxClass;

class QeRxObject : NotCopied {
public:
    [[nodiscard]] bool isKindOf(const QeRxClass* ancestor) const;
};

class QeRxDynamicLinker final : public QeRxObject {
public:
    [[nodiscard]] static QeRxClass* desc();
    [[nodiscard]] bool unlockApplication(void* appHandle);
};

class QeRxDictionary final : NotCopied {
public:
    [[nodiscard]] QeRxObject* at(const wchar_t* key) const;
};

inline constexpr const wchar_t* kQeRxDynamicLinkerKey = L"DynamicLinker";
[[nodiscard]] QeRxDictionary* qerxSysRegistry();
[[nodiscard]] bool qerxRegisterAppMDIAware(void* appHandle);

class QeDbDatabase;
class QeDbDictionary;
class QeDbRegAppTable;

namespace QeDb {
enum class OpenMode : unsigned char { kForRead, kForWrite, kForNotify };
using enum OpenMode;
enum class QeDbDwgVersion : unsigned char { kGeoDataTextDwg = 30 };
using enum QeDbDwgVersion;
} // namespace QeDb

class QeDbObjectId final {
public:
    QeDbObjectId() = default;
    [[nodiscard]] bool isNull() const;

private:
    void* record_ = nullptr;
};

class QeDbObjectReactor;

class QeDbObject : NotCopied {
public:
    [[nodiscard]] QeDbObjectId objectId() const;
    [[nodiscard]] QeDbDatabase* database() const;
    void addReactor(QeDbObjectReactor* reactor);
    [[nodiscard]] Qeapp::ErrorStatus close();
    [[nodiscard]] Qeapp::ErrorStatus upgradeOpen();
    [[nodiscard]] resbuf* xData(const wchar_t* application) const;
    [[nodiscard]] Qeapp::ErrorStatus setXData(const resbuf* chain);

protected:
    QeDbObject() = default;
    ~QeDbObject() = default;
};

template <class T>
[[nodiscard]] Qeapp::ErrorStatus qedbOpenObject(T*& object, QeDbObjectId /*id*/, QeDb::OpenMode /*mode*/)
{
    object = nullptr;
    return Qeapp::eKeyNotFound;
}

class QeDbDictionaryIterator : NotCopied {
public:
    virtual ~QeDbDictionaryIterator();
    [[nodiscard]] bool done() const;
    [[nodiscard]] bool next();
    [[nodiscard]] const wchar_t* name() const;
    [[nodiscard]] QeDbObjectId objectId() const;
};

class QeDbDictionary final : public QeDbObject {
public:
    QeDbDictionary() = default;
    ~QeDbDictionary() = default;
    [[nodiscard]] Qeapp::ErrorStatus getAt(const wchar_t* key, QeDbObjectId& id) const;
    [[nodiscard]] Qeapp::ErrorStatus setAt(const wchar_t* key, QeDbObject* object, QeDbObjectId& id);
    [[nodiscard]] Qeapp::ErrorStatus remove(const wchar_t* key, QeDbObjectId& id);
    [[nodiscard]] Qeapp::ErrorStatus remove(const wchar_t* key);
    [[nodiscard]] Qeapp::ErrorStatus remove(QeDbObjectId id);
    [[nodiscard]] bool has(const wchar_t* key) const;
    [[nodiscard]] std::uint32_t numEntries() const;
    [[nodiscard]] QeDbDictionaryIterator* newIterator() const;
};

class QeDbXrecord final : public QeDbObject {
public:
    QeDbXrecord() = default;
    ~QeDbXrecord() = default;
    [[nodiscard]] Qeapp::ErrorStatus setFromRbChain(const resbuf* chain, QeDbDatabase* database);
    [[nodiscard]] Qeapp::ErrorStatus rbChain(resbuf*& chain, QeDbDatabase* database) const;
};

class QeDbXrecordIterator final : NotCopied {
public:
    explicit QeDbXrecordIterator(const QeDbXrecord* record);
    [[nodiscard]] bool done() const;
    [[nodiscard]] short curResType() const;
};

class QeDbRegAppTableRecord final : public QeDbObject {
public:
    QeDbRegAppTableRecord() = default;
    ~QeDbRegAppTableRecord() = default;
    [[nodiscard]] Qeapp::ErrorStatus setName(const wchar_t* name);
};

class QeDbRegAppTable final : public QeDbObject {
public:
    ~QeDbRegAppTable() = default;
    [[nodiscard]] bool has(const wchar_t* name) const;
    [[nodiscard]] Qeapp::ErrorStatus add(QeDbObjectId& id, QeDbRegAppTableRecord* record);

private:
    QeDbRegAppTable() = default;
};

class QeDbGeoData final : public QeDbObject {
public:
    QeDbGeoData() = default;
    ~QeDbGeoData() = default;
    [[nodiscard]] const wchar_t* coordinateSystem() const;
    [[nodiscard]] Qeapp::ErrorStatus setCoordinateSystem(const wchar_t* text);
    [[nodiscard]] Qeapp::ErrorStatus setBlockTableRecordId(QeDbObjectId id);
    [[nodiscard]] Qeapp::ErrorStatus postToDb(QeDbObjectId& id);
};

[[nodiscard]] Qeapp::ErrorStatus qedbGetGeoDataObjId(QeDbDatabase* database, QeDbObjectId& id);

class QeDbSymbolUtilitiesServices final : NotCopied {
public:
    [[nodiscard]] Qeapp::ErrorStatus blockModelSpaceId(QeDbDatabase* database, QeDbObjectId& id) const;
};
[[nodiscard]] const QeDbSymbolUtilitiesServices* qedbSymUtil();

class QeDbTransaction;

class QeDbTransactionManager final : NotCopied {
public:
    [[nodiscard]] QeDbTransaction* startTransaction();
    [[nodiscard]] Qeapp::ErrorStatus endTransaction();
    [[nodiscard]] Qeapp::ErrorStatus abortTransaction();
};

class QeDbDatabase final : NotCopied {
public:
    [[nodiscard]] Qeapp::ErrorStatus getNamedObjectsDictionary(QeDbDictionary*& dictionary, QeDb::OpenMode mode);
    [[nodiscard]] Qeapp::ErrorStatus getRegAppTable(QeDbRegAppTable*& table, QeDb::OpenMode mode);
    [[nodiscard]] QeDbTransactionManager* transactionManager() const;

private:
    QeDbDatabase() = default;
    ~QeDbDatabase() = default;
};

class QeDbHostApplicationServices final : NotCopied {
public:
    [[nodiscard]] QeDbDatabase* workingDatabase() const;
    [[nodiscard]] const wchar_t* getUserRegistryProductRootKey() const;
};
[[nodiscard]] QeDbHostApplicationServices* qedbHostApplicationServices();

namespace QeAp {
enum class DocLockMode : unsigned char { kWrite = 4 };
using enum DocLockMode;
} // namespace QeAp

class QeApDocument;

class QeApDocManager final : NotCopied {
public:
    [[nodiscard]] QeApDocument* curDocument() const;
    [[nodiscard]] Qeapp::ErrorStatus lockDocument(QeApDocument* document, QeAp::DocLockMode mode,
                                                  const wchar_t* globalCommandName, const wchar_t* localCommandName,
                                                  bool prompt);
    [[nodiscard]] Qeapp::ErrorStatus unlockDocument(QeApDocument* document);
};
[[nodiscard]] QeApDocManager* qeDocManager();

class QeDbSaveErrorRecorder final : NotCopied {
public:
    [[nodiscard]] Qeapp::ErrorStatus recordError(Qeapp::ErrorStatus code);
};

class QeDbSaveErrorMessageRecorder final : NotCopied {
public:
    [[nodiscard]] Qeapp::ErrorStatus recordError(Qeapp::ErrorStatus code, const wchar_t* message);
};

class QeDbDecompositionReactor : NotCopied {
protected:
    QeDbDecompositionReactor() = default;
    ~QeDbDecompositionReactor() = default;
    virtual Qeapp::ErrorStatus decomposeForSave(QeDbDatabase* database, QeDb::QeDbDwgVersion version,
                                                QeDbSaveErrorRecorder* errors,
                                                QeDbSaveErrorMessageRecorder* messages) = 0;
};

class QeDbDecompositionManager final : NotCopied {
public:
    [[nodiscard]] Qeapp::ErrorStatus addReactor(QeDbDecompositionReactor* reactor);
    [[nodiscard]] Qeapp::ErrorStatus removeReactor(QeDbDecompositionReactor* reactor);
};
[[nodiscard]] QeDbDecompositionManager* qedbGetDecompositionManager();

#if !defined(_WIN32)
#pragma GCC visibility pop
#endif
