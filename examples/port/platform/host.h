// What the module needs of a CAD host. Copy this header and fill it: give each declaration a body, or write an alias, a
// derived class, a wrapper or an inline function over the product's own SDK that has this name and these members.
//
// A comment with three slashes says what the module expects. The tables of docs/porting.md are made of these comments
// and declarations; H1, H2 … are the promises there. Declarations without such a comment are this product's own.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <string>

#include "core/trial.h"
#include "draft/session.h"

#if !defined(_WIN32)
#pragma GCC visibility push(default)
#endif

// Results

namespace Qeapp {
/// The result of a host call, returned by value and compared with `==` and `!=`. It may be an enumeration of any width,
/// scoped or not, or an alias of one: the values below are names in `Qeapp` of its type.
enum ErrorStatus : std::uint16_t {
    /// Success. The number is fixed.
    eOk = 0,
    /// Made by the module. The number is fixed.
    eNotApplicable = 2,
    /// Made by the module.
    eInvalidInput = std::uint16_t(Draft::Outcome::badArgument),
    /// Made by the module.
    eOutOfMemory = std::uint16_t(Draft::Outcome::outOfMemory),
    /// Made by the module.
    eInvalidResbuf = std::uint16_t(Draft::Outcome::badValue),
    /// Made by the module.
    eNoTransaction = std::uint16_t(Draft::Outcome::noStep),
    /// Made by the module.
    eNoObject = std::uint16_t(Draft::Outcome::noRecord),
    /// The drawing has no GeoData object (H26).
    eNullObjectId = std::uint16_t(Draft::Outcome::emptyLink),
    /// The object is erased (H13).
    eObjectErased = std::uint16_t(Draft::Outcome::erased),
    /// The key is not in the dictionary (H15, H18), or the drawing has no GeoData object (H26).
    eKeyNotFound = std::uint16_t(Draft::Outcome::unknownName),
    /// The object is of another class (H13).
    eNotThatKindOfClass = std::uint16_t(Draft::Outcome::otherKind),
    /// Made by the module. No export reaches it: a stub will do.
    eInvalidDrawingVersion = std::uint16_t(Draft::Outcome::badEdition),
    /// Made by the module. The number is fixed.
    eNoDatabase = 124,
    /// Made by the module. The number is fixed.
    eVetoed = 325
};
} // namespace Qeapp

// Memory and resbufs

/// Makes a host string, a copy of the text, which the module hands on to its caller (H32).
Qeapp::ErrorStatus qeutNewString(const wchar_t* source, wchar_t*& copy);
/// Makes a host buffer, all zero (H33). The module hands it on to its caller, or keeps a wide text in it.
Qeapp::ErrorStatus qeutNewBuffer(unsigned char*& buffer, std::size_t lengthInBytes);
/// Releases a string of `qeutNewString`, or a text in a buffer of `qeutNewBuffer` (H34).
void qeutDelBuffer(wchar_t*& text);
/// The same for bytes: callers of the module release with it what `SerializeCoordinateSystem` returns. No source of the
/// module names it.
void qeutDelBuffer(unsigned char*& buffer);
/// Memory that a resbuf can own (H35). Null on failure.
void* qeapp_malloc(std::size_t lengthInBytes);

namespace QeRb {
/// The group codes, `int` constants or enumerators of an unscoped enumeration: each is compared with a `short`, and
/// passed through variable arguments as an `int`. No source of the module names it.
enum GroupCode : int {
    /// A text of any length (H24), 300 in a drawing.
    kText = 300,
    /// A run of bytes, 310 in a drawing.
    kBinaryChunk = 310,
    /// A text in extended data, 1000 in a drawing.
    kXdataString = 1000,
    /// The name of a registered application, in extended data, 1001 in a drawing.
    kXdataAppName = 1001,
    /// The text "{" or "}", 1002 in a drawing. Xrecords hold it too.
    kXdataControl = 1002,
    /// A 32-bit integer, 1071 in a drawing. Xrecords hold it too.
    kXdataInteger32 = 1071,
    /// Ends the arguments of `qeutBuildList`.
    kListEnd = 5000
};
} // namespace QeRb

/// A run of bytes in a resbuf.
struct QeBinaryChunk {
    /// The length in bytes.
    short clen;
    /// The bytes, from `qeapp_malloc`. The resbuf owns them.
    char* buf;
};

/// A result buffer, linked into chains.
struct resbuf {
    /// The next one, or null. The module links chains by it.
    resbuf* rbnext;
    /// The group code.
    short restype;
    /// The value, a union with the members below. The group code selects the member.
    union {
        /// For `kXdataInteger32`.
        std::int32_t rlong;
        /// For `kText` and the other codes of texts: a text from `qeapp_malloc`. The resbuf owns it.
        wchar_t* rstring;
        /// For `kBinaryChunk`.
        QeBinaryChunk rbinary;
    } resval;
};

/// Makes a resbuf for the module to release (H36). Null on failure.
resbuf* qeutNewRb(int groupCode);
/// Makes a chain of codes and wide texts, for the module to release (H37). Null on failure.
resbuf* qeutBuildList(int groupCode, ...);
/// Releases a chain (H38).
void qeutRelRb(resbuf* chain);

// Runtime

namespace QeRx {
/// The messages to `qerxEntryPoint` and its answer, `int` constants or enumerators of unscoped enumerations. No source
/// of the module names it.
enum EntryPointCode : int {
    /// The answer of the entry point.
    kRetOK = 0,
    /// The message after loading.
    kInitAppMsg = 1,
    /// The message before unloading.
    kUnloadAppMsg = 2
};
} // namespace QeRx

/// A class descriptor. The module passes pointers to it on. No source of the module names it.
class QeRxClass;

/// The base of what the system registry holds.
class QeRxObject {
public:
    /// Whether the object's class is the given one or derives from it.
    bool isKindOf(const QeRxClass* ancestor) const;

protected:
    explicit QeRxObject(const QeRxClass* ownClass) : m_class(ownClass) {}

private:
    const QeRxClass* m_class;
};

/// Loads and unloads modules. A `static_cast` from `QeRxObject` must lead to it, so the base is not virtual.
class QeRxDynamicLinker : public QeRxObject {
public:
    QeRxDynamicLinker() : QeRxObject(desc()) {}
    /// The descriptor of this class.
    static QeRxClass* desc();
    /// Lets the module of the handle be unloaded on demand. The result is not looked at.
    bool unlockApplication(void* appHandle);
};

/// The type of the system registry.
class QeRxDictionary {
public:
    /// The object under the key, which stays the registry's. Never null for `kQeRxDynamicLinkerKey`: the module calls
    /// what is there without a look. No other key is asked for.
    QeRxObject* at(const wchar_t* key) const;
};

/// The key of the dynamic linker in the system registry, a wide text of the host's own.
inline constexpr const wchar_t* kQeRxDynamicLinkerKey = L"DynamicLinker";

/// The system registry, never null.
QeRxDictionary* qerxSysRegistry();
/// Notes that the module of the handle works with several documents. The result is not looked at.
bool qerxRegisterAppMDIAware(void* appHandle);

// Objects of a drawing

class QeDbDatabase;
class QeDbDictionary;
class QeDbRegAppTable;

namespace QeDb {
/// The modes of an open, an enumeration (H10).
enum OpenMode : int {
    /// To read.
    kForRead = 0,
    /// To write.
    kForWrite = 1,
    /// To be notified. The module never passes it. No export reaches it: a stub will do.
    kForNotify = 2
};

/// Drawing formats, a type that the host's numbers convert to and that `<` orders by age. Values without a name occur.
enum QeDbDwgVersion : int {
    /// From this format on the text of the GeoData object is the one stored form.
    kGeoDataTextDwg = 30
};
} // namespace QeDb

/// The identity of an object in a drawing: a value that is copied, assigned, and null when it is default-constructed.
/// It is valid as long as its drawing is.
class QeDbObjectId {
public:
    /// Makes a null id.
    QeDbObjectId() = default;
    explicit QeDbObjectId(Draft::Link link) : m_link(link) {}
    /// Whether it identifies nothing.
    bool isNull() const { return m_link == Draft::Link(); }
    Draft::Link link() const { return m_link; }

private:
    Draft::Link m_link;
};

/// Hears of the changes of one object. The module passes pointers to it on. No export reaches it: a stub will do.
class QeDbObjectReactor {};

/// The base of the objects below. The module opens those in a drawing and closes them; those that it made and that
/// never got into a drawing it deletes, by the pointer to their own class (H12).
class QeDbObject {
public:
    /// Null until the object is in a drawing. The module tells by it whether to close or to delete.
    QeDbObjectId objectId() const;
    /// The drawing that the object is in.
    QeDbDatabase* database() const;
    /// Attaches a reactor, which stays its client's. No export reaches it: a stub will do.
    void addReactor(QeDbObjectReactor* reactor);
    /// Ends one open of an object in a drawing. The result is not looked at.
    Qeapp::ErrorStatus close();
    /// Changes an open for reading to one for writing (H11).
    Qeapp::ErrorStatus upgradeOpen();
    /// A copy of the extended data of an application, for the module to release, or null where there are none (H22).
    /// Null on failure too: the module then takes the data for absent.
    resbuf* xData(const wchar_t* application) const;
    /// Replaces the extended data of an application (H23).
    Qeapp::ErrorStatus setXData(const resbuf* chain);

    QeDbObject(const QeDbObject&) = delete;
    QeDbObject& operator=(const QeDbObject&) = delete;
    virtual ~QeDbObject() = default;
    Qeapp::ErrorStatus open(Draft::Link link, QeDb::OpenMode mode);

protected:
    explicit QeDbObject(Draft::Kind kind);

    // The record as it is now: that of the drawing, or the one of an object that is not in a drawing yet.
    Draft::Record record() const;
    Draft::Outcome setRecord(Draft::Record record);
    Draft::Drawing* drawing() const;
    Draft::Link link() const { return m_link; }
    // Notes where an object was added; it is open for writing now.
    static void noteAdded(QeDbObject& object, Draft::Link link, QeDbObjectId& id);
    static Draft::Record recordOf(const QeDbObject& object) { return object.record(); }

private:
    Draft::Link m_link;
    Draft::Purpose m_purpose = Draft::Purpose::writing;
    Draft::Record m_new;
    Core::Living m_living{"objects"};
};

/// Opens an object as its class, which is one of those below (H9, H13).
template <class T>
Qeapp::ErrorStatus qedbOpenObject(T*& object, QeDbObjectId id, QeDb::OpenMode mode)
{
    object = nullptr;
    std::unique_ptr<T> opened(new (std::nothrow) T());
    if (!opened)
        return Qeapp::eOutOfMemory;
    const Qeapp::ErrorStatus result = opened->open(id.link(), mode);
    if (result == Qeapp::eOk)
        object = opened.release();
    return result;
}

/// Walks the entries of a dictionary (H19).
class QeDbDictionaryIterator {
public:
    /// The module deletes the iterator.
    virtual ~QeDbDictionaryIterator() = default;
    /// Whether there are no more entries. No export reaches it: a stub will do.
    bool done() const;
    /// Goes to the next entry. The result is not looked at. No export reaches it: a stub will do.
    bool next();
    /// The key of the entry, the iterator's own. No export reaches it: a stub will do.
    const wchar_t* name() const;
    /// Returns the id of the entry's object. If there is no entry, the id cannot be opened.
    QeDbObjectId objectId() const;

    explicit QeDbDictionaryIterator(const Draft::Entries& entries);

private:
    std::vector<std::pair<std::wstring, Draft::Link>> m_entries;
    std::size_t m_at = 0;
    Core::Living m_living{"iterators"};
};

/// Named objects of a drawing. Whether the case of letters tells two keys apart is the product's: the module always
/// spells a key in the same way.
class QeDbDictionary : public QeDbObject {
public:
    /// Made with `new (std::nothrow)`. It may throw, or the class's `operator new` may give null. A class with an
    /// `operator new` of its own has the `operator delete` that matches.
    QeDbDictionary();
    /// The module deletes a dictionary that it could not add.
    ~QeDbDictionary() override = default;
    /// The id of the object under the key (H15).
    Qeapp::ErrorStatus getAt(const wchar_t* key, QeDbObjectId& id) const;
    /// Adds a new object in place of what is under the key (H16, H17).
    Qeapp::ErrorStatus setAt(const wchar_t* key, QeDbObject* object, QeDbObjectId& id);
    /// Takes the entry out (H18).
    Qeapp::ErrorStatus remove(const wchar_t* key, QeDbObjectId& id);
    /// Takes the entry out. No export reaches it: a stub will do.
    Qeapp::ErrorStatus remove(const wchar_t* key);
    /// Takes the entry of the object out. No export reaches it: a stub will do.
    Qeapp::ErrorStatus remove(QeDbObjectId id);
    /// Whether the key is there. No export reaches it: a stub will do.
    bool has(const wchar_t* key) const;
    /// The number of entries, of any integer type. No export reaches it: a stub will do.
    std::uint32_t numEntries() const;
    /// A new iterator at the first entry, for the module to delete (H19). Null on failure.
    QeDbDictionaryIterator* newIterator() const;
};

/// An object that holds one resbuf chain.
class QeDbXrecord : public QeDbObject {
public:
    /// Made with `new (std::nothrow)`. It may throw, or the class's `operator new` may give null. A class with an
    /// `operator new` of its own has the `operator delete` that matches.
    QeDbXrecord();
    /// The module deletes an xrecord that it could not add.
    ~QeDbXrecord() override = default;
    /// Copies the chain into the record, which is not in a drawing yet (H20).
    Qeapp::ErrorStatus setFromRbChain(const resbuf* chain, QeDbDatabase* database);
    /// A copy of the chain, for the module to release (H20). Null on failure.
    Qeapp::ErrorStatus rbChain(resbuf*& chain, QeDbDatabase* database) const;

    Draft::Values values() const { return record().values; }
};

/// Looks at the resbufs of an open xrecord without copying them (H21).
class QeDbXrecordIterator {
public:
    /// Stands at the first resbuf.
    explicit QeDbXrecordIterator(const QeDbXrecord* record) : m_values(record->values()) {}
    /// Whether there is none.
    bool done() const { return m_values.empty(); }
    /// The group code.
    short curResType() const { return m_values.front().tag; }

private:
    Draft::Values m_values;
};

/// The entry of a registered application.
class QeDbRegAppTableRecord : public QeDbObject {
public:
    /// Made with `new (std::nothrow)`. It may throw, or the class's `operator new` may give null. A class with an
    /// `operator new` of its own has the `operator delete` that matches.
    QeDbRegAppTableRecord();
    /// The module deletes a record that it could not add.
    ~QeDbRegAppTableRecord() override = default;
    /// Names the application.
    Qeapp::ErrorStatus setName(const wchar_t* name);
};

/// The registered applications of a drawing.
class QeDbRegAppTable : public QeDbObject {
public:
    /// Must be public: the module's holder names it, though a table is always in a drawing.
    ~QeDbRegAppTable() override = default;
    /// Whether the application is registered.
    bool has(const wchar_t* name) const;
    /// Adds a new record to a table that is open for write (H17, H25).
    Qeapp::ErrorStatus add(QeDbObjectId& id, QeDbRegAppTableRecord* record);

    QeDbRegAppTable();
};

/// The object that holds a drawing's coordinate system.
class QeDbGeoData : public QeDbObject {
public:
    /// Made with plain `new`. It may throw. A class with an `operator new` of its own, which must not give null, has
    /// the `operator delete` that matches.
    QeDbGeoData();
    /// The module deletes an object that it could not add.
    ~QeDbGeoData() override = default;
    /// The object's own text, never null. The module copies it before it closes the object.
    const wchar_t* coordinateSystem() const;
    /// Copies the text (H28).
    Qeapp::ErrorStatus setCoordinateSystem(const wchar_t* text);
    /// Sets the block that is to own the object.
    Qeapp::ErrorStatus setBlockTableRecordId(QeDbObjectId id);
    /// Adds the object to the drawing of its block (H17, H27).
    Qeapp::ErrorStatus postToDb(QeDbObjectId& id);

private:
    Draft::Link m_block;
    mutable std::wstring m_text;
};

/// The id of the drawing's GeoData object (H26).
Qeapp::ErrorStatus qedbGetGeoDataObjId(QeDbDatabase* database, QeDbObjectId& id);

/// Queries over symbol tables.
class QeDbSymbolUtilitiesServices {
public:
    /// The id of the block that is the drawing's model space.
    Qeapp::ErrorStatus blockModelSpaceId(QeDbDatabase* database, QeDbObjectId& id) const;
};

/// The services above, never null.
const QeDbSymbolUtilitiesServices* qedbSymUtil();

// Databases and application

/// A transaction. The module compares the pointer with null. No source of the module names it.
class QeDbTransaction;

/// The transactions of one drawing (H29).
class QeDbTransactionManager {
public:
    /// Starts a transaction, which the manager owns. Null when none could be started.
    QeDbTransaction* startTransaction();
    /// Ends the innermost transaction and keeps its work (H30).
    Qeapp::ErrorStatus endTransaction();
    /// Ends the innermost transaction and undoes its work (H29). The result is not looked at.
    Qeapp::ErrorStatus abortTransaction();

    explicit QeDbTransactionManager(Draft::Drawing& drawing) : m_drawing(drawing) {}

private:
    Draft::Drawing& m_drawing;
};

/// A drawing.
class QeDbDatabase {
public:
    /// Opens the named objects dictionary (H9).
    Qeapp::ErrorStatus getNamedObjectsDictionary(QeDbDictionary*& dictionary, QeDb::OpenMode mode);
    /// Opens the table of registered applications (H9).
    Qeapp::ErrorStatus getRegAppTable(QeDbRegAppTable*& table, QeDb::OpenMode mode);
    /// Never null. It stays the drawing's.
    QeDbTransactionManager* transactionManager() const { return &m_transactions; }

    explicit QeDbDatabase(Draft::Drawing& drawing) : m_drawing(drawing), m_transactions(drawing) {}
    // The one that goes with a drawing, or null for none. The drawing keeps it.
    static QeDbDatabase* of(Draft::Drawing* drawing);
    Draft::Drawing& drawing() const { return m_drawing; }

private:
    Draft::Drawing& m_drawing;
    mutable QeDbTransactionManager m_transactions;
};

/// The services of the application.
class QeDbHostApplicationServices {
public:
    /// The drawing that commands act on, or null (H7). It stays the host's.
    QeDbDatabase* workingDatabase() const;
    /// The product's path below `HKEY_CURRENT_USER`, without a backslash at its end; the host's own. Null counts as
    /// empty.
    const wchar_t* getUserRegistryProductRootKey() const;
};

/// The services above. Null counts as no working database.
QeDbHostApplicationServices* qedbHostApplicationServices();

namespace QeAp {
/// The modes of a lock. No source of the module names it.
enum DocLockMode : int {
    /// For write.
    kWrite = 4
};
} // namespace QeAp

/// An open document. The module passes pointers to it on.
class QeApDocument;

/// The open documents.
class QeApDocManager {
public:
    /// The document that commands act on, or null. It stays the host's.
    QeApDocument* curDocument() const;
    /// Locks the document until the matching unlock (H31). The command names are null and `prompt` is true.
    Qeapp::ErrorStatus lockDocument(QeApDocument* document, QeAp::DocLockMode mode, const wchar_t* globalCommandName,
                                    const wchar_t* localCommandName, bool prompt);
    /// Ends a lock. The result is not looked at.
    Qeapp::ErrorStatus unlockDocument(QeApDocument* document);
};

/// The open documents. Null counts as no document.
QeApDocManager* qeDocManager();

// Saving

/// Records why a save failed.
class QeDbSaveErrorRecorder {
public:
    /// The result becomes the reactor's answer.
    Qeapp::ErrorStatus recordError(Qeapp::ErrorStatus code);

    explicit QeDbSaveErrorRecorder(Draft::SaveLog& log) : m_log(log) {}

private:
    Draft::SaveLog& m_log;
};

/// Records why a save failed, with a text. The module uses it where the host gives no `QeDbSaveErrorRecorder`.
class QeDbSaveErrorMessageRecorder {
public:
    /// The result becomes the reactor's answer. The message is empty.
    Qeapp::ErrorStatus recordError(Qeapp::ErrorStatus code, const wchar_t* message);

    explicit QeDbSaveErrorMessageRecorder(Draft::SaveLog& log) : m_log(log) {}

private:
    Draft::SaveLog& m_log;
};

/// A class to derive from. The module makes one object and deletes it as its own class, so the destructor may be
/// protected and need not be virtual.
class QeDbDecompositionReactor {
public:
    /// Called by the host before it writes (H5). Either recorder may be null.
    virtual Qeapp::ErrorStatus decomposeForSave(QeDbDatabase* database, QeDb::QeDbDwgVersion version,
                                                QeDbSaveErrorRecorder* errors, QeDbSaveErrorMessageRecorder* messages);

protected:
    ~QeDbDecompositionReactor() = default;
};

/// The list of reactors.
class QeDbDecompositionManager {
public:
    /// Adds a reactor, which stays the module's. The result is not looked at.
    Qeapp::ErrorStatus addReactor(QeDbDecompositionReactor* reactor);
    /// Takes a reactor out, which the module deletes next. The result is not looked at.
    Qeapp::ErrorStatus removeReactor(QeDbDecompositionReactor* reactor);
};

/// The list above. Null when the host has none: then nothing is registered.
QeDbDecompositionManager* qedbGetDecompositionManager();

#if !defined(_WIN32)
#pragma GCC visibility pop
#endif
