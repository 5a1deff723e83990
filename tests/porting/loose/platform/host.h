// A CAD host of other names, as loose as docs/porting.md allows: every type that can be an alias is one.
#pragma once

#include "product_sdk.h"
#include "windows_macros.h"

namespace Product {

class EntryWalker : public Named {
public:
    virtual bool done() const;
    virtual void next(bool forward = true, bool skipsErased = true);
    const wchar_t* name(int language = 0) const override;
    virtual Handle objectId() const;
};

class Catalogue : public Container {
public:
    explicit Catalogue(bool ordered = false);
    virtual Outcome getAt(const wchar_t* key, Handle& id) const;
    Outcome getAt(const wchar_t* key, Stored*& object, int mode = 0) const;
    virtual Outcome setAt(const wchar_t* key, Stored* object, Handle& id, bool replaces = true);
    virtual Outcome remove(const wchar_t* key, Handle& id);
    virtual Outcome remove(const wchar_t* key);
    virtual Outcome remove(Handle id);
    virtual int numEntries() const;
    virtual EntryWalker* newIterator(bool skipsErased = true) const;
};

class Record : public Stored {
public:
    explicit Record(const ListItem* list = nullptr);
    virtual Outcome setFromRbChain(const ListItem* list, Drawing* drawing = nullptr);
    virtual Outcome rbChain(ListItem*& list, Drawing* drawing = nullptr) const;
};

class RecordWalker : public Named {
public:
    RecordWalker(const Record* record, int position = 0);
    virtual bool done() const;
    virtual short curResType() const;
};

class Application : public Stored {
public:
    Outcome setName(const wchar_t* name, bool checks = true);
    Outcome setName(const std::string& utf8);
};

class Applications : public Container {
public:
    virtual Outcome add(Handle& id, Application* application, bool opens = true);
    Outcome add(Application* application);
};

class Place : public Stored {
public:
    virtual const wchar_t* coordinateSystem() const;
    virtual Outcome setCoordinateSystem(const wchar_t* text, bool checks = false);
    Outcome setCoordinateSystem(const std::wstring& text);
    virtual Outcome setBlockTableRecordId(const Handle& id);
    virtual Outcome postToDb(Handle& id);
    Outcome postToDb();
};

class Symbols {
public:
    virtual Outcome blockModelSpaceId(Drawing* drawing, Handle& id, bool exact = true) const;
};

class Undo {
public:
    virtual Counted* startTransaction(const wchar_t* name = nullptr);
    virtual Outcome endTransaction(bool keeps = true);
    virtual Receipt abortTransaction();
};

enum Mode : std::uint8_t { Read = 7, Write = 9, Notify = 11 };
enum Format : long { Newest = 40 };
enum Lock : unsigned { WriteLock = 16 };

class Drawing : public Thing, public Named {
public:
    virtual Outcome getNamedObjectsDictionary(Catalogue*& dictionary, Mode mode = Read);
    virtual Outcome getRegAppTable(Applications*& table, Mode mode = Read);
    virtual Undo* transactionManager() const;
};

class Services : public Named {
public:
    virtual Drawing* workingDatabase(bool locks = false) const;
    virtual const wchar_t* getUserRegistryProductRootKey() const;
};

class Sheet : public Named {};

class Sheets {
public:
    virtual Sheet* curDocument() const;
    virtual Outcome lockDocument(Sheet* sheet, unsigned mode = 0, const wchar_t* global = nullptr,
                                 const wchar_t* local = nullptr, bool prompt = true, int seconds = 0);
    virtual void unlockDocument(Sheet* sheet, bool force = false);
};

class ErrorList : public Named {
public:
    virtual Outcome recordError(Outcome outcome, int severity = 1);
    virtual Outcome recordError(Outcome outcome, const wchar_t* text, int severity = 1);
    Outcome recordError(const char* text);
};

/// Its destructor is public and not virtual, and it has an overload that a derived class hides.
class SaveReactor {
public:
    virtual Outcome decomposeForSave(Drawing* drawing, Format format, ErrorList* errors, class ErrorTexts* texts);
    virtual Outcome decomposeForSave(Drawing* drawing);
};

class ErrorTexts : public ErrorList {};

class SaveReactors {
public:
    virtual void addReactor(SaveReactor* reactor, int priority = 0);
    virtual Receipt removeReactor(SaveReactor* reactor);
};

} // namespace Product

namespace Qeapp {
using ErrorStatus = Product::Outcome;
inline constexpr ErrorStatus eOk = Product::Fine;
inline constexpr ErrorStatus eNotApplicable = Product::DoesNotApply;
inline constexpr ErrorStatus eInvalidInput = Product::BadArgument;
inline constexpr ErrorStatus eOutOfMemory = Product::NoMemory;
inline constexpr ErrorStatus eInvalidResbuf = Product::BadList;
inline constexpr ErrorStatus eNoTransaction = Product::NoUndo;
inline constexpr ErrorStatus eNoObject = Product::Missing;
inline constexpr ErrorStatus eNullObjectId = Product::NullHandle;
inline constexpr ErrorStatus eObjectErased = Product::Erased;
inline constexpr ErrorStatus eKeyNotFound = Product::NoSuchKey;
inline constexpr ErrorStatus eNotThatKindOfClass = Product::WrongClass;
inline constexpr ErrorStatus eInvalidDrawingVersion = Product::BadFormat;
inline constexpr ErrorStatus eNoDatabase = Product::NoDrawing;
inline constexpr ErrorStatus eVetoed = Product::Refused;
} // namespace Qeapp

namespace QeRb {
inline constexpr int kText = 300;
inline constexpr int kBinaryChunk = 310;
inline constexpr int kXdataString = 1000;
inline constexpr int kXdataAppName = 1001;
inline constexpr int kXdataControl = 1002;
inline constexpr int kXdataInteger32 = 1071;
inline constexpr int kListEnd = 0;
} // namespace QeRb

namespace QeRx {
inline constexpr int kRetOK = 0;
inline constexpr int kInitAppMsg = 1;
inline constexpr int kUnloadAppMsg = 2;
} // namespace QeRx

namespace QeDb {
using OpenMode = Product::Mode;
inline constexpr OpenMode kForRead = Product::Read;
inline constexpr OpenMode kForWrite = Product::Write;
inline constexpr OpenMode kForNotify = Product::Notify;
using QeDbDwgVersion = Product::Format;
inline constexpr QeDbDwgVersion kGeoDataTextDwg{30};
} // namespace QeDb

namespace QeAp {
using DocLockMode = unsigned;
inline constexpr DocLockMode kWrite = Product::WriteLock;
} // namespace QeAp

using QeRxClass = Product::Type;
using QeRxObject = Product::Thing;
using QeRxDynamicLinker = Product::Loader;
using QeRxDictionary = Product::Registry;
using QeBinaryChunk = Product::Bytes;
using resbuf = Product::ListItem;
using QeDbDatabase = Product::Drawing;
using QeDbObjectId = Product::Handle;
using QeDbObjectReactor = Product::Watcher;
using QeDbObject = Product::Stored;
using QeDbDictionary = Product::Catalogue;
using QeDbDictionaryIterator = Product::EntryWalker;
using QeDbXrecord = Product::Record;
using QeDbXrecordIterator = Product::RecordWalker;
using QeDbRegAppTable = Product::Applications;
using QeDbRegAppTableRecord = Product::Application;
using QeDbGeoData = Product::Place;
using QeDbSymbolUtilitiesServices = Product::Symbols;
using QeDbTransactionManager = Product::Undo;
using QeDbHostApplicationServices = Product::Services;
using QeApDocument = Product::Sheet;
using QeApDocManager = Product::Sheets;
using QeDbSaveErrorRecorder = Product::ErrorList;
using QeDbSaveErrorMessageRecorder = Product::ErrorTexts;
using QeDbDecompositionReactor = Product::SaveReactor;
using QeDbDecompositionManager = Product::SaveReactors;

inline constexpr wchar_t kQeRxDynamicLinkerKey[] = L"DynamicLinker";

Qeapp::ErrorStatus qeutNewString(const wchar_t* source, wchar_t*& copy, int heap = 0);
Qeapp::ErrorStatus qeutNewString(const char* source, char*& copy, int heap = 0);
Qeapp::ErrorStatus qeutNewBuffer(unsigned char*& buffer, std::size_t lengthInBytes, int heap = 0);
template <class Element>
Product::Receipt qeutDelBuffer(Element*& buffer);
void* qeapp_malloc(unsigned long long lengthInBytes, int heap = 0);
resbuf* qeutNewRb(short groupCode = 0, bool zeroed = true);
resbuf* qeutBuildList(int groupCode, ...);
Product::Receipt qeutRelRb(const resbuf* list, bool all = true);
QeRxDictionary* qerxSysRegistry(int kind = 0);
void qerxRegisterAppMDIAware(const void* handle);
template <class T>
Qeapp::ErrorStatus qedbOpenObject(T*& object, const QeDbObjectId& id, QeDb::OpenMode mode, bool openErased = false);
Qeapp::ErrorStatus qedbGetGeoDataObjId(const QeDbDatabase* database, QeDbObjectId& id);
const QeDbSymbolUtilitiesServices* qedbSymUtil(bool compatible = false);
QeDbHostApplicationServices* qedbHostApplicationServices();
QeApDocManager* qeDocManager();
QeDbDecompositionManager* qedbGetDecompositionManager();
