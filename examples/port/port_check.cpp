// port_check: tells an engineer who ports the module to a product what holds already and what does not.
//
// It calls the product through its four headers and the module through its exports, and nothing else. Each row of the
// tables `kHostChecks` to `kFailingCallChecks` is a check of one promise of docs/porting.md; the program prints a line
// for each. The rows are in the order in which a port is best mended: the first that fails may be the reason for later
// ones.
//
// Set the environment variable VORLEN_USER_DICTIONARY_PATH to an empty folder before: without it, and while the user's
// registry holds a configuration, the checks of the user's settings are not tried, so that nobody's are lost.
//
// The exit status is 0 when nothing fails, 1 when something fails, and 2 when the checks could not begin.

// The standard library comes first: a product's headers may define macros such as min and max.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cwctype>
#include <exception>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <new>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

// In angle brackets, so that the platform is the one that the build points at and not any that lies beside this file.
#include <platform/foundation.h>
#include <platform/host.h>
#include <platform/spatial_reference.h>
#include <platform/win32.h>

#include "coordsys/orvel_coordinate_system.h"
#include "coordsys/orvel_transformation_config.h"
#include "port_check.h"

extern "C" int qerxGetApiVersion();

namespace {

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;
namespace Library = Zentara::Infrastructure::SpatialReference;

using System = Library::CoordinateReferenceSystemDefinition;

constexpr const wchar_t* kLegacyApplication = L"KTN_PROJECTION";
constexpr const wchar_t* kDefinitionKey = L"ORVEL_CSINDWG_REGAPP";
constexpr const wchar_t* kConfigurationKey = L"ORVEL_CS_TRANSFORMATION_CONFIG";
constexpr const wchar_t* kConfigurationItemKey = L"CONFIG_ITEM";
constexpr const wchar_t* kSettingsFolderVariable = L"VORLEN_USER_DICTIONARY_PATH";
constexpr const wchar_t* kTestKey = L"PORT_CHECK";
constexpr const wchar_t* kTestApplication = L"PORT_CHECK_APPLICATION";
const auto kLegacyFormat = static_cast<QeDb::QeDbDwgVersion>(29);
const auto kNewestFormat = static_cast<QeDb::QeDbDwgVersion>(33);

// How a check ends early.

struct Failed {
    std::string what;
};
struct NotTried {
    std::string why;
};

/// The promise of the row does not hold.
void expect(bool condition, const std::string& what)
{
    if (!condition)
        throw Failed{what};
}

/// The check cannot be made. Where a call is to blame, another row is about it.
void need(bool condition, const std::string& what)
{
    if (!condition)
        throw NotTried{what};
}

/// For calls that a product may give any result or none.
template <class Call>
void ignoreResult(const Call& call)
{
    static_cast<void>(call());
}

std::string number(long long value)
{
    return std::to_string(value);
}

std::string answer(const char* call, Qeapp::ErrorStatus result)
{
    return std::string(call) + " answers " + number(static_cast<int>(result));
}

std::string answer(const char* call, Library::Status status)
{
    return std::string(call) + " answers " + number(static_cast<int>(status));
}

void expectOk(Qeapp::ErrorStatus result, const char* call)
{
    expect(result == Qeapp::eOk, answer(call, result));
}

void expectOk(Library::Status status, const char* call)
{
    expect(status == Library::statusOk, answer(call, status));
}

void needOk(Qeapp::ErrorStatus result, const char* call)
{
    need(result == Qeapp::eOk, answer(call, result));
}

void needOk(Library::Status status, const char* call)
{
    need(status == Library::statusOk, answer(call, status));
}

std::string printable(std::wstring_view text)
{
    constexpr std::size_t kShown = 60;
    std::ostringstream line;
    for (const wchar_t character : text.substr(0, kShown)) {
        if (character >= L' ' && character <= L'~')
            line << static_cast<char>(character);
        else
            line << '?';
    }
    line << (text.size() > kShown ? "..." : "");
    return '"' + line.str() + '"';
}

std::string printable(const wchar_t* text)
{
    return text != nullptr ? printable(std::wstring_view(text)) : "null";
}

std::wstring orEmpty(const wchar_t* text)
{
    return text != nullptr ? text : L"";
}

// Owners of what the host and the library hand out.

template <class T, void (*release)(T*)>
class Owned {
public:
    Owned() = default;
    explicit Owned(T* object) : object_(object) {}
    Owned(Owned&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    Owned& operator=(Owned&& other) noexcept
    {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Owned() { reset(); }

    T* get() const { return object_; }
    T* operator->() const { return object_; }
    explicit operator bool() const { return object_ != nullptr; }
    T* detach() { return std::exchange(object_, nullptr); }
    /// For a call that fills an out-parameter.
    T*& put()
    {
        reset();
        return object_;
    }
    void reset()
    {
        if (object_ != nullptr)
            release(std::exchange(object_, nullptr));
    }

private:
    T* object_ = nullptr;
};

/// As the module does: what is in a drawing is closed, what is in none is deleted.
template <class T>
void closeOrDelete(T* object)
{
    if (object->objectId().isNull())
        delete object;
    else
        static_cast<void>(object->close());
}

template <class T>
void destroy(T* object)
{
    ignoreResult([&] { return Library::Object::Destroy(object); });
}

void releaseText(wchar_t* text)
{
    ignoreResult([&] { return qeutDelBuffer(text); });
}

void releaseBytes(unsigned char* bytes)
{
    ignoreResult([&] { return qeutDelBuffer(bytes); });
}

void releaseChain(resbuf* chain)
{
    ignoreResult([&] { return qeutRelRb(chain); });
}

template <class T>
using Opened = Owned<T, closeOrDelete<T>>;
template <class T>
using Made = Owned<T, destroy<T>>;
using HostText = Owned<wchar_t, releaseText>;
using HostBytes = Owned<unsigned char, releaseBytes>;
using Chain = Owned<resbuf, releaseChain>;
using MadeArray = Made<Library::DefinitionBaseArray>;
using MadeSystem = Made<System>;

// Drawings.

/// A new drawing that is closed at the end of the scope.
class Drawing {
public:
    Drawing() : database_(PortCheck::newDrawing())
    {
        need(database_ != nullptr, "the hook newDrawing gives no drawing");
    }
    Drawing(const Drawing&) = delete;
    Drawing& operator=(const Drawing&) = delete;
    ~Drawing() { PortCheck::closeDrawing(database_); }

    QeDbDatabase* database() const { return database_; }

private:
    QeDbDatabase* database_;
};

Qeapp::ErrorStatus openNamedObjects(const Drawing& drawing, QeDb::OpenMode mode, Opened<QeDbDictionary>& dictionary)
{
    const Qeapp::ErrorStatus result = drawing.database()->getNamedObjectsDictionary(dictionary.put(), mode);
    if (result != Qeapp::eOk)
        static_cast<void>(dictionary.detach()); // nothing was opened, whatever the pointer is
    return result;
}

Opened<QeDbDictionary> namedObjects(const Drawing& drawing, QeDb::OpenMode mode)
{
    Opened<QeDbDictionary> dictionary;
    const Qeapp::ErrorStatus result = openNamedObjects(drawing, mode, dictionary);
    needOk(result, "QeDbDatabase::getNamedObjectsDictionary");
    need(static_cast<bool>(dictionary), "QeDbDatabase::getNamedObjectsDictionary gives no dictionary");
    return dictionary;
}

Opened<QeDbRegAppTable> registeredApplications(const Drawing& drawing, QeDb::OpenMode mode)
{
    Opened<QeDbRegAppTable> table;
    const Qeapp::ErrorStatus result = drawing.database()->getRegAppTable(table.put(), mode);
    if (result != Qeapp::eOk)
        static_cast<void>(table.detach());
    needOk(result, "QeDbDatabase::getRegAppTable");
    need(static_cast<bool>(table), "QeDbDatabase::getRegAppTable gives no table");
    return table;
}

/// An empty owner when it cannot be opened as such an object.
template <class T>
Opened<T> openAs(const QeDbObjectId& id, QeDb::OpenMode mode)
{
    T* object = nullptr;
    if (qedbOpenObject(object, id, mode) != Qeapp::eOk)
        return {};
    return Opened<T>(object);
}

Chain textChain(const wchar_t* text)
{
    Chain chain(qeutBuildList(QeRb::kText, text, QeRb::kListEnd));
    need(static_cast<bool>(chain), "qeutBuildList gives no chain");
    return chain;
}

/// Puts an xrecord with one text under the key.
void putXrecord(const Opened<QeDbDictionary>& dictionary, const Drawing& drawing, const wchar_t* key,
                const wchar_t* text, QeDbObjectId& id)
{
    Opened<QeDbXrecord> record(new (std::nothrow) QeDbXrecord);
    need(static_cast<bool>(record), "there is no QeDbXrecord");
    needOk(record->setFromRbChain(textChain(text).get(), drawing.database()), "QeDbXrecord::setFromRbChain");
    needOk(dictionary->setAt(key, record.get(), id), "QeDbDictionary::setAt");
}

bool hasKey(const Opened<QeDbDictionary>& dictionary, const wchar_t* key)
{
    QeDbObjectId id;
    return dictionary->getAt(key, id) == Qeapp::eOk && !id.isNull();
}

void registerApplication(const Drawing& drawing, const wchar_t* name)
{
    const Opened<QeDbRegAppTable> table = registeredApplications(drawing, QeDb::kForWrite);
    Opened<QeDbRegAppTableRecord> record(new (std::nothrow) QeDbRegAppTableRecord);
    need(static_cast<bool>(record), "there is no QeDbRegAppTableRecord");
    needOk(record->setName(name), "QeDbRegAppTableRecord::setName");
    QeDbObjectId id;
    needOk(table->add(id, record.get()), "QeDbRegAppTable::add");
}

// What the module stores in a drawing, as text to compare.

bool holdsText(int groupCode)
{
    return groupCode == QeRb::kText || groupCode == QeRb::kXdataString || groupCode == QeRb::kXdataAppName ||
           groupCode == QeRb::kXdataControl;
}

std::wstring describeItem(const resbuf& item)
{
    std::wstring text = std::to_wstring(item.restype) + L' ';
    if (holdsText(item.restype))
        text += orEmpty(item.resval.rstring);
    if (item.restype == QeRb::kXdataInteger32)
        text += std::to_wstring(item.resval.rlong);
    if (item.restype == QeRb::kBinaryChunk && item.resval.rbinary.buf != nullptr) {
        for (int index = 0; index < item.resval.rbinary.clen; ++index)
            text += std::to_wstring(static_cast<unsigned char>(item.resval.rbinary.buf[index])) + L',';
    }
    return text;
}

std::wstring describeChain(const resbuf* chain)
{
    std::wstring text;
    for (; chain != nullptr; chain = chain->rbnext)
        text += describeItem(*chain) + L'\n';
    return text;
}

std::wstring describeXrecord(const Drawing& drawing, const QeDbObjectId& id)
{
    const Opened<QeDbXrecord> record = openAs<QeDbXrecord>(id, QeDb::kForRead);
    need(static_cast<bool>(record), "qedbOpenObject does not open an xrecord");
    Chain chain;
    needOk(record->rbChain(chain.put(), drawing.database()), "QeDbXrecord::rbChain");
    return describeChain(chain.get());
}

constexpr const wchar_t* kNone = L"none";

std::wstring geoDataText(const Drawing& drawing)
{
    QeDbObjectId id;
    if (qedbGetGeoDataObjId(drawing.database(), id) != Qeapp::eOk || id.isNull())
        return kNone;
    const Opened<QeDbGeoData> geoData = openAs<QeDbGeoData>(id, QeDb::kForRead);
    need(static_cast<bool>(geoData), "qedbOpenObject does not open the GeoData object");
    return orEmpty(geoData->coordinateSystem());
}

std::wstring configurationRecord(const Drawing& drawing, const Opened<QeDbDictionary>& dictionary)
{
    QeDbObjectId id;
    if (dictionary->getAt(kConfigurationKey, id) != Qeapp::eOk)
        return kNone;
    const Opened<QeDbDictionary> configuration = openAs<QeDbDictionary>(id, QeDb::kForRead);
    need(static_cast<bool>(configuration), "qedbOpenObject does not open a dictionary");
    if (configuration->getAt(kConfigurationItemKey, id) != Qeapp::eOk)
        return kNone;
    return describeXrecord(drawing, id);
}

struct Stored {
    std::wstring legacyRecord;     // extended data of the named objects dictionary
    std::wstring definitionRecord; // the definition xrecord
    std::wstring geoData;
    std::wstring configuration;
};

Stored readStored(const Drawing& drawing)
{
    Stored stored{kNone, kNone, geoDataText(drawing), kNone};
    const Opened<QeDbDictionary> dictionary = namedObjects(drawing, QeDb::kForRead);
    const Chain legacy(dictionary->xData(kLegacyApplication));
    if (legacy)
        stored.legacyRecord = describeChain(legacy.get());
    QeDbObjectId id;
    if (dictionary->getAt(kDefinitionKey, id) == Qeapp::eOk)
        stored.definitionRecord = describeXrecord(drawing, id);
    stored.configuration = configurationRecord(drawing, dictionary);
    return stored;
}

/// Empty when they are equal.
std::string difference(const Stored& before, const Stored& after)
{
    std::string text;
    const auto add = [&text](const char* name, const std::wstring& left, const std::wstring& right) {
        if (left != right)
            text += std::string(text.empty() ? "" : ", ") + name + " was " + printable(left) + " and is " +
                    printable(right);
    };
    add("the legacy projection record", before.legacyRecord, after.legacyRecord);
    add("the definition xrecord", before.definitionRecord, after.definitionRecord);
    add("the GeoData text", before.geoData, after.geoData);
    add("the configuration", before.configuration, after.configuration);
    return text;
}

bool storesNoSystem(const Stored& stored)
{
    return stored.legacyRecord == kNone && stored.definitionRecord == kNone &&
           (stored.geoData == kNone || stored.geoData.empty());
}

// Systems.

const PortCheck::Systems& systems()
{
    static const PortCheck::Systems all = PortCheck::systems();
    return all;
}

const wchar_t* projectedCode()
{
    need(systems().projected != nullptr, "the hook systems names no projected system");
    return systems().projected;
}

const wchar_t* geographicCode()
{
    need(systems().geographic != nullptr, "the hook systems names no geographic system");
    return systems().geographic;
}

const wchar_t* userDefinedCode()
{
    need(systems().userDefinedCode != nullptr && systems().userDefinedText != nullptr,
         "the hook systems names no user-defined system");
    return systems().userDefinedCode;
}

/// Whether the codes are equal but for the case of their letters (S4).
bool isSameCode(std::wstring_view left, std::wstring_view right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), [](wchar_t one, wchar_t other) {
        return std::towlower(static_cast<std::wint_t>(one)) == std::towlower(static_cast<std::wint_t>(other));
    });
}

std::wstring codeOf(const Library::DefinitionBase* definition)
{
    const wchar_t* code = nullptr;
    if (definition == nullptr || definition->GetCode(code) != Library::statusOk)
        return L"";
    return orEmpty(code);
}

MadeSystem loadSystem(const wchar_t* code)
{
    MadeSystem system;
    needOk(System::Load(code, system.put()), "CoordinateReferenceSystemDefinition::Load");
    need(static_cast<bool>(system), "CoordinateReferenceSystemDefinition::Load gives no definition");
    return system;
}

/// Takes the coordinate reference system out of the array.
MadeSystem takeSystem(const MadeArray& array)
{
    for (int left = array ? array->GetCount() : 0; left > 0; --left) {
        Made<Library::DefinitionBase> item(array->Remove(0));
        if (auto* const system = dynamic_cast<System*>(item.get())) {
            static_cast<void>(item.detach());
            return MadeSystem(system);
        }
    }
    return {};
}

void appendUnit(std::vector<unsigned char>& bytes, std::uint32_t unit)
{
    bytes.push_back(static_cast<unsigned char>(unit & 0xFFU));
    bytes.push_back(static_cast<unsigned char>(unit >> 8U & 0xFFU));
}

/// UTF-16 little-endian with its NUL, whatever the size of wchar_t is.
std::vector<unsigned char> utf16(std::wstring_view text)
{
    constexpr std::uint32_t kBeyondBasicPlane = 0x10000;
    std::vector<unsigned char> bytes;
    for (const wchar_t character : text) {
        const auto code = static_cast<std::uint32_t>(character);
        if (code < kBeyondBasicPlane) {
            appendUnit(bytes, code);
            continue;
        }
        appendUnit(bytes, 0xD800U + ((code - kBeyondBasicPlane) >> 10U));
        appendUnit(bytes, 0xDC00U + ((code - kBeyondBasicPlane) & 0x3FFU));
    }
    appendUnit(bytes, 0);
    return bytes;
}

MadeSystem userDefinedSystem()
{
    userDefinedCode();
    const std::vector<unsigned char> bytes = utf16(systems().userDefinedText);
    MadeArray array;
    needOk(Cs::DeserializeCoordinateSystem(array.put(), bytes.data(), static_cast<int>(bytes.size())),
           "DeserializeCoordinateSystem of the user-defined system's text");
    MadeSystem system = takeSystem(array);
    need(static_cast<bool>(system), "the user-defined system's text holds no coordinate reference system");
    return system;
}

/// The module's functions call these without a look at the result.
void needServices(const Drawing& drawing)
{
    need(drawing.database()->transactionManager() != nullptr, "QeDbDatabase::transactionManager gives null");
    need(qedbSymUtil() != nullptr, "qedbSymUtil gives null");
}

void needAssigned(const Drawing& drawing, const System* system)
{
    needServices(drawing);
    needOk(Cs::SetCoordinateSystem(system, drawing.database()), "SetCoordinateSystem");
}

/// The code that the module reads from the drawing's definition, "none" without one, "unreadable" on failure.
std::wstring assignedCode(const Drawing& drawing)
{
    MadeSystem system;
    if (Cs::GetCoordinateSystem(system.put(), nullptr, drawing.database()) != Qeapp::eOk)
        return L"unreadable";
    return system ? codeOf(system.get()) : kNone;
}

void expectAssigned(const Drawing& drawing, const std::wstring& code)
{
    const std::wstring found = assignedCode(drawing);
    expect(isSameCode(found, code),
           "GetCoordinateSystem reads " + printable(found) + " in the place of " + printable(code));
}

// The module.

/// The module calls the dynamic linker without a look. Without one, loading it would end the program.
std::string faultOfDynamicLinker()
{
    if (qerxSysRegistry() == nullptr)
        return "qerxSysRegistry gives null";
    const QeRxObject* const linker = qerxSysRegistry()->at(kQeRxDynamicLinkerKey);
    if (linker == nullptr)
        return "QeRxDictionary::at gives null for kQeRxDynamicLinkerKey";
    return linker->isKindOf(QeRxDynamicLinker::desc())
               ? ""
               : "QeRxObject::isKindOf says that what is under kQeRxDynamicLinkerKey is no QeRxDynamicLinker";
}

bool loadModule()
{
    return faultOfDynamicLinker().empty() && PortCheck::loadModule();
}

// Checks of the host.

void checkWorkingDatabase()
{
    const Drawing drawing;
    QeDbHostApplicationServices* const services = qedbHostApplicationServices();
    expect(services != nullptr, "qedbHostApplicationServices gives null, so that no drawing is the working one");
    expect(services->workingDatabase() == drawing.database(),
           "QeDbHostApplicationServices::workingDatabase does not give the new drawing");
}

void checkDocumentLock()
{
    const Drawing drawing;
    QeApDocManager* const manager = qeDocManager();
    expect(manager != nullptr, "qeDocManager gives null");
    QeApDocument* const document = manager->curDocument();
    expect(document != nullptr, "QeApDocManager::curDocument gives null for a drawing that was just opened");
    for (int round = 0; round < 2; ++round) {
        const Qeapp::ErrorStatus result = manager->lockDocument(document, QeAp::kWrite, nullptr, nullptr, true);
        expect(result == Qeapp::eOk, answer("QeApDocManager::lockDocument", result) +
                                         (round == 0 ? "" : " after QeApDocManager::unlockDocument"));
        static_cast<void>(manager->unlockDocument(document));
    }
}

void checkOpening()
{
    const Drawing drawing;
    Opened<QeDbDictionary> dictionary;
    expectOk(openNamedObjects(drawing, QeDb::kForRead, dictionary), "QeDbDatabase::getNamedObjectsDictionary to read");
    expect(static_cast<bool>(dictionary), "QeDbDatabase::getNamedObjectsDictionary succeeds and gives null");
    QeDbRegAppTable* table = nullptr;
    expectOk(drawing.database()->getRegAppTable(table, QeDb::kForRead), "QeDbDatabase::getRegAppTable to read");
    const Opened<QeDbRegAppTable> owned(table);
    expect(table != nullptr, "QeDbDatabase::getRegAppTable succeeds and gives null");
}

void checkOpenModes()
{
    const Drawing drawing;
    Opened<QeDbDictionary> first = namedObjects(drawing, QeDb::kForRead);
    Opened<QeDbDictionary> second;
    expectOk(openNamedObjects(drawing, QeDb::kForRead, second),
             "QeDbDatabase::getNamedObjectsDictionary to read beside another reader");
    QeDbDictionary* third = nullptr;
    const Qeapp::ErrorStatus beside = drawing.database()->getNamedObjectsDictionary(third, QeDb::kForWrite);
    const Opened<QeDbDictionary> owned(beside == Qeapp::eOk ? third : nullptr);
    expect(beside != Qeapp::eOk,
           "QeDbDatabase::getNamedObjectsDictionary opens to write what others read; a writer must be alone");
    expect(third == nullptr, "QeDbDatabase::getNamedObjectsDictionary fails and leaves a pointer that is not null");
    second.reset();
    first.reset();
    expectOk(openNamedObjects(drawing, QeDb::kForWrite, first),
             "QeDbDatabase::getNamedObjectsDictionary to write after all readers closed it");
}

void checkClosing()
{
    const Drawing drawing;
    for (int round = 0; round < 3; ++round) {
        Opened<QeDbDictionary> dictionary;
        const Qeapp::ErrorStatus result = openNamedObjects(drawing, QeDb::kForWrite, dictionary);
        need(round > 0 || result == Qeapp::eOk, answer("QeDbDatabase::getNamedObjectsDictionary to write", result));
        expect(result == Qeapp::eOk,
               "QeDbObject::close does not end the open: the named objects dictionary cannot be opened again to write");
    }
}

void checkUpgrading()
{
    const Drawing drawing;
    const Opened<QeDbDictionary> first = namedObjects(drawing, QeDb::kForRead);
    {
        const Opened<QeDbDictionary> second = namedObjects(drawing, QeDb::kForRead);
        expect(first->upgradeOpen() != Qeapp::eOk, "QeDbObject::upgradeOpen succeeds while others read");
    }
    expectOk(first->upgradeOpen(), "QeDbObject::upgradeOpen of the only reader");
    QeDbObjectId id;
    putXrecord(first, drawing, kTestKey, L"text", id);
}

void checkMissingKey()
{
    const Drawing drawing;
    const Opened<QeDbDictionary> dictionary = namedObjects(drawing, QeDb::kForRead);
    QeDbObjectId id;
    expect(id.isNull(), "a new QeDbObjectId is not null");
    const Qeapp::ErrorStatus result = dictionary->getAt(kTestKey, id);
    expect(result == Qeapp::eKeyNotFound,
           answer("QeDbDictionary::getAt of a key that is not there", result) + ", which is not Qeapp::eKeyNotFound");
}

void checkAdding()
{
    const Drawing drawing;
    QeDbObjectId id;
    {
        const Opened<QeDbDictionary> dictionary = namedObjects(drawing, QeDb::kForWrite);
        Opened<QeDbXrecord> record(new (std::nothrow) QeDbXrecord);
        expect(static_cast<bool>(record) && record->objectId().isNull(),
               "QeDbObject::objectId of a new object is not null, so that the module would close it, not delete it");
        needOk(record->setFromRbChain(textChain(L"text").get(), drawing.database()), "QeDbXrecord::setFromRbChain");
        expectOk(dictionary->setAt(kTestKey, record.get(), id), "QeDbDictionary::setAt");
        expect(!id.isNull(), "QeDbDictionary::setAt succeeds and gives a null id");
        expect(!record->objectId().isNull(),
               "QeDbObject::objectId is null after QeDbDictionary::setAt, so that the module would delete the object");
        expect(record->database() == drawing.database(), "QeDbObject::database is not the drawing of the dictionary");
    }
    expect(hasKey(namedObjects(drawing, QeDb::kForWrite), kTestKey),
           "QeDbDictionary::getAt does not find what QeDbDictionary::setAt added");
    expect(describeXrecord(drawing, id) == L"300 text\n", "the xrecord does not hold its text after it was closed");
}

void checkNewObjects()
{
    const auto expectNew = [](const auto* object, const char* type) {
        expect(object != nullptr, std::string("new ") + type + " gives null");
        expect(object->objectId().isNull(), std::string("QeDbObject::objectId of a new ") + type + " is not null");
        delete object;
    };
    expectNew(new (std::nothrow) QeDbXrecord, "QeDbXrecord");
    expectNew(new (std::nothrow) QeDbDictionary, "QeDbDictionary");
    expectNew(new (std::nothrow) QeDbRegAppTableRecord, "QeDbRegAppTableRecord");
    expectNew(new QeDbGeoData, "QeDbGeoData");
}

void checkIds()
{
    const Drawing drawing;
    QeDbObjectId first;
    putXrecord(namedObjects(drawing, QeDb::kForWrite), drawing, kTestKey, L"first", first);
    for (int index = 0; index < 100; ++index) {
        const std::wstring key = L"PORT_CHECK_" + std::to_wstring(index);
        QeDbObjectId id;
        putXrecord(namedObjects(drawing, QeDb::kForWrite), drawing, key.c_str(), L"other", id);
    }
    const QeDbObjectId copy = first;
    expect(describeXrecord(drawing, copy) == L"300 first\n",
           "the id of an object leads to another one after 100 objects were added");
}

void checkReplacing()
{
    const Drawing drawing;
    const Opened<QeDbDictionary> dictionary = namedObjects(drawing, QeDb::kForWrite);
    QeDbObjectId first;
    QeDbObjectId second;
    QeDbObjectId found;
    putXrecord(dictionary, drawing, kTestKey, L"first", first);
    putXrecord(dictionary, drawing, kTestKey, L"second", second);
    needOk(dictionary->getAt(kTestKey, found), "QeDbDictionary::getAt");
    expect(describeXrecord(drawing, found) == L"300 second\n",
           "QeDbDictionary::setAt under a key that is there does not put the new object in the place of the old one");
}

void checkOpeningAsClass()
{
    const Drawing drawing;
    QeDbObjectId id;
    putXrecord(namedObjects(drawing, QeDb::kForWrite), drawing, kTestKey, L"text", id);
    QeDbXrecord* record = nullptr;
    Qeapp::ErrorStatus result = qedbOpenObject(record, id, QeDb::kForRead);
    expectOk(result, "qedbOpenObject of an xrecord");
    expect(record != nullptr, "qedbOpenObject succeeds and gives null");
    static_cast<void>(record->close());
    QeDbDictionary* other = nullptr;
    result = qedbOpenObject(other, id, QeDb::kForRead);
    expect(result == Qeapp::eNotThatKindOfClass, answer("qedbOpenObject of an xrecord as a dictionary", result) +
                                                     ", which is not Qeapp::eNotThatKindOfClass");
    expect(other == nullptr, "qedbOpenObject fails and leaves a pointer that is not null");
    expect(static_cast<bool>(openAs<QeDbXrecord>(id, QeDb::kForWrite)),
           "qedbOpenObject of an object of another class leaves it open");
}

void checkRemoving()
{
    const Drawing drawing;
    const Opened<QeDbDictionary> dictionary = namedObjects(drawing, QeDb::kForWrite);
    QeDbObjectId id;
    Qeapp::ErrorStatus result = dictionary->remove(kTestKey, id);
    expect(result == Qeapp::eKeyNotFound,
           answer("QeDbDictionary::remove of a key that is not there", result) + ", which is not Qeapp::eKeyNotFound");
    putXrecord(dictionary, drawing, kTestKey, L"text", id);
    expectOk(dictionary->remove(kTestKey, id), "QeDbDictionary::remove");
    expect(!hasKey(dictionary, kTestKey), "QeDbDictionary::getAt finds what QeDbDictionary::remove took out");
    result = dictionary->remove(kTestKey, id);
    expect(result == Qeapp::eKeyNotFound,
           answer("QeDbDictionary::remove of a key that was removed", result) + ", which is not Qeapp::eKeyNotFound");
}

void checkIterating()
{
    const Drawing drawing;
    const Opened<QeDbDictionary> root = namedObjects(drawing, QeDb::kForWrite);
    Opened<QeDbDictionary> dictionary(new (std::nothrow) QeDbDictionary);
    QeDbObjectId id;
    needOk(root->setAt(kTestKey, dictionary.get(), id), "QeDbDictionary::setAt of a dictionary");
    const std::unique_ptr<QeDbDictionaryIterator> empty(dictionary->newIterator());
    expect(empty != nullptr, "QeDbDictionary::newIterator gives null for an empty dictionary");
    expect(!openAs<QeDbXrecord>(empty->objectId(), QeDb::kForRead),
           "QeDbDictionaryIterator::objectId of an empty dictionary can be opened");
    putXrecord(dictionary, drawing, L"key", L"text", id);
    const std::unique_ptr<QeDbDictionaryIterator> entry(dictionary->newIterator());
    expect(entry != nullptr, "QeDbDictionary::newIterator gives null");
    dictionary.reset();
    expect(describeXrecord(drawing, entry->objectId()) == L"300 text\n",
           "QeDbDictionaryIterator::objectId is not the first entry after the dictionary is closed");
}

void checkXrecord()
{
    const Drawing drawing;
    Chain chain(qeutNewRb(QeRb::kXdataInteger32));
    need(static_cast<bool>(chain), "qeutNewRb gives null");
    chain->resval.rlong = 70000;
    chain->rbnext =
        qeutBuildList(QeRb::kXdataControl, L"{", QeRb::kText, L"text", QeRb::kXdataControl, L"}", QeRb::kListEnd);
    Opened<QeDbXrecord> record(new (std::nothrow) QeDbXrecord);
    need(static_cast<bool>(record), "there is no QeDbXrecord");
    expectOk(record->setFromRbChain(chain.get(), drawing.database()), "QeDbXrecord::setFromRbChain");
    const std::wstring given = describeChain(chain.get());
    chain.reset();
    QeDbObjectId id;
    needOk(namedObjects(drawing, QeDb::kForWrite)->setAt(kTestKey, record.get(), id), "QeDbDictionary::setAt");
    record.reset();
    const std::wstring found = describeXrecord(drawing, id);
    expect(found == given, "QeDbXrecord::rbChain gives " + printable(found) + " in the place of " + printable(given));
    expect(describeXrecord(drawing, id) == given, "QeDbXrecord::rbChain gives its own chain away, not a copy");
}

void checkXrecordIterator()
{
    const Drawing drawing;
    QeDbObjectId id;
    putXrecord(namedObjects(drawing, QeDb::kForWrite), drawing, kTestKey, L"text", id);
    const Opened<QeDbXrecord> record = openAs<QeDbXrecord>(id, QeDb::kForRead);
    need(static_cast<bool>(record), "qedbOpenObject does not open an xrecord");
    const QeDbXrecordIterator iterator(record.get());
    expect(!iterator.done(), "QeDbXrecordIterator::done is true for a record with a resbuf");
    expect(iterator.curResType() == QeRb::kText,
           "QeDbXrecordIterator::curResType is " + number(iterator.curResType()) + " in the place of 300");
}

void checkBytesOfXrecord()
{
    const Drawing drawing;
    constexpr std::string_view bytes("\x00\x7F\x80\xFF\x0A", 5);
    const Chain chain(qeutNewRb(QeRb::kBinaryChunk));
    need(static_cast<bool>(chain), "qeutNewRb gives null");
    auto* const memory = static_cast<char*>(qeapp_malloc(bytes.size()));
    expect(memory != nullptr, "qeapp_malloc gives null");
    std::memcpy(memory, bytes.data(), bytes.size());
    chain->resval.rbinary.buf = memory;
    chain->resval.rbinary.clen = static_cast<short>(bytes.size());
    Opened<QeDbXrecord> record(new (std::nothrow) QeDbXrecord);
    need(static_cast<bool>(record), "there is no QeDbXrecord");
    expectOk(record->setFromRbChain(chain.get(), drawing.database()), "QeDbXrecord::setFromRbChain of a binary chunk");
    Chain copy;
    expectOk(record->rbChain(copy.put(), drawing.database()), "QeDbXrecord::rbChain of a binary chunk");
    expect(describeChain(copy.get()) == describeChain(chain.get()), "QeDbXrecord::rbChain gives other bytes");
}

void checkLongText()
{
    constexpr std::size_t kCharacters = 100000;
    const Drawing drawing;
    QeDbObjectId id;
    const std::wstring text(kCharacters, L'x');
    putXrecord(namedObjects(drawing, QeDb::kForWrite), drawing, kTestKey, text.c_str(), id);
    expect(describeXrecord(drawing, id) == L"300 " + text + L'\n',
           "a text of 100,000 characters does not come back from an xrecord as it was");
}

void checkRegisteringApplication()
{
    const Drawing drawing;
    expect(!registeredApplications(drawing, QeDb::kForRead)->has(kTestApplication),
           "QeDbRegAppTable::has is true for an application that nobody registered");
    {
        const Opened<QeDbRegAppTable> table = registeredApplications(drawing, QeDb::kForWrite);
        Opened<QeDbRegAppTableRecord> record(new (std::nothrow) QeDbRegAppTableRecord);
        need(static_cast<bool>(record), "there is no QeDbRegAppTableRecord");
        expectOk(record->setName(kTestApplication), "QeDbRegAppTableRecord::setName");
        QeDbObjectId id;
        expectOk(table->add(id, record.get()), "QeDbRegAppTable::add");
        expect(!record->objectId().isNull(), "QeDbObject::objectId is null after QeDbRegAppTable::add");
    }
    expect(registeredApplications(drawing, QeDb::kForRead)->has(kTestApplication),
           "QeDbRegAppTable::has is false for an application that QeDbRegAppTable::add registered");
}

Chain extendedData(const wchar_t* text)
{
    Chain chain(text != nullptr
                    ? qeutBuildList(QeRb::kXdataAppName, kTestApplication, QeRb::kXdataString, text, QeRb::kListEnd)
                    : qeutBuildList(QeRb::kXdataAppName, kTestApplication, QeRb::kListEnd));
    need(static_cast<bool>(chain), "qeutBuildList gives null");
    return chain;
}

void checkReadingExtendedData()
{
    const Drawing drawing;
    registerApplication(drawing, kTestApplication);
    const Opened<QeDbDictionary> dictionary = namedObjects(drawing, QeDb::kForWrite);
    expect(!Chain(dictionary->xData(kTestApplication)), "QeDbObject::xData is not null where there is no such data");
    const Chain chain = extendedData(L"text");
    needOk(dictionary->setXData(chain.get()), "QeDbObject::setXData");
    const Chain found(dictionary->xData(kTestApplication));
    expect(describeChain(found.get()) == describeChain(chain.get()),
           "QeDbObject::xData gives " + printable(describeChain(found.get())) + " in the place of " +
               printable(describeChain(chain.get())));
}

void checkWritingExtendedData()
{
    const Drawing drawing;
    registerApplication(drawing, kTestApplication);
    const Opened<QeDbDictionary> dictionary = namedObjects(drawing, QeDb::kForWrite);
    expectOk(dictionary->setXData(extendedData(L"first").get()), "QeDbObject::setXData");
    expectOk(dictionary->setXData(extendedData(L"second").get()), "QeDbObject::setXData");
    expect(describeChain(Chain(dictionary->xData(kTestApplication)).get()) ==
               describeChain(extendedData(L"second").get()),
           "QeDbObject::setXData does not put the new data in the place of the old ones");
    expectOk(dictionary->setXData(extendedData(nullptr).get()), "QeDbObject::setXData of a name alone");
    expect(!Chain(dictionary->xData(kTestApplication)),
           "QeDbObject::setXData of a name alone does not remove the data");
}

/// Adds a GeoData object to the model space.
Opened<QeDbGeoData> postGeoData(const Drawing& drawing, QeDbObjectId& id)
{
    need(qedbSymUtil() != nullptr, "qedbSymUtil gives null");
    QeDbObjectId modelSpace;
    expectOk(qedbSymUtil()->blockModelSpaceId(drawing.database(), modelSpace),
             "QeDbSymbolUtilitiesServices::blockModelSpaceId");
    expect(!modelSpace.isNull(), "QeDbSymbolUtilitiesServices::blockModelSpaceId succeeds and gives a null id");
    Opened<QeDbGeoData> geoData(new QeDbGeoData);
    expectOk(geoData->setBlockTableRecordId(modelSpace), "QeDbGeoData::setBlockTableRecordId");
    expectOk(geoData->postToDb(id), "QeDbGeoData::postToDb");
    return geoData;
}

void checkMissingGeoData()
{
    const Drawing drawing;
    QeDbObjectId id;
    const Qeapp::ErrorStatus result = qedbGetGeoDataObjId(drawing.database(), id);
    expect(result == Qeapp::eKeyNotFound || result == Qeapp::eNullObjectId,
           answer("qedbGetGeoDataObjId of a drawing without a GeoData object", result));
    expect(id.isNull(), "qedbGetGeoDataObjId gives an id for a drawing without a GeoData object");
}

void checkPostingGeoData()
{
    const Drawing drawing;
    QeDbObjectId id;
    {
        const Opened<QeDbGeoData> geoData = postGeoData(drawing, id);
        expect(!geoData->objectId().isNull(), "QeDbObject::objectId is null after QeDbGeoData::postToDb");
    }
    QeDbObjectId found;
    expectOk(qedbGetGeoDataObjId(drawing.database(), found), "qedbGetGeoDataObjId after QeDbGeoData::postToDb");
    expect(static_cast<bool>(openAs<QeDbGeoData>(found, QeDb::kForWrite)),
           "qedbOpenObject does not open to write what QeDbGeoData::postToDb added");
}

void checkGeoDataText()
{
    constexpr std::size_t kCharacters = 32767;
    const Drawing drawing;
    QeDbObjectId id;
    const Opened<QeDbGeoData> geoData = postGeoData(drawing, id);
    expect(geoData->coordinateSystem() != nullptr, "QeDbGeoData::coordinateSystem of a new object is null");
    const std::wstring text(kCharacters, L'x');
    expectOk(geoData->setCoordinateSystem(text.c_str()), "QeDbGeoData::setCoordinateSystem of 32,767 characters");
    expect(orEmpty(geoData->coordinateSystem()) == text,
           "QeDbGeoData::coordinateSystem gives another text than QeDbGeoData::setCoordinateSystem was given");
}

QeDbTransactionManager& transactions(const Drawing& drawing)
{
    QeDbTransactionManager* const manager = drawing.database()->transactionManager();
    need(manager != nullptr, "QeDbDatabase::transactionManager gives null");
    return *manager;
}

void checkAborting()
{
    const Drawing drawing;
    QeDbTransactionManager& manager = transactions(drawing);
    QeDbObjectId id;
    expect(manager.startTransaction() != nullptr, "QeDbTransactionManager::startTransaction gives null");
    putXrecord(namedObjects(drawing, QeDb::kForWrite), drawing, kTestKey, L"outer", id);
    expect(manager.startTransaction() != nullptr,
           "QeDbTransactionManager::startTransaction gives null inside another transaction");
    putXrecord(namedObjects(drawing, QeDb::kForWrite), drawing, L"PORT_CHECK_INNER", L"inner", id);
    static_cast<void>(manager.abortTransaction());
    expect(!hasKey(namedObjects(drawing, QeDb::kForRead), L"PORT_CHECK_INNER"),
           "QeDbTransactionManager::abortTransaction does not undo an addition");
    expect(hasKey(namedObjects(drawing, QeDb::kForRead), kTestKey),
           "QeDbTransactionManager::abortTransaction undoes the work of the transaction around it, too");
    static_cast<void>(manager.abortTransaction());
    expect(!hasKey(namedObjects(drawing, QeDb::kForRead), kTestKey),
           "QeDbTransactionManager::abortTransaction does not undo what came before an inner transaction");
}

constexpr const wchar_t* kRemovedKey = L"PORT_CHECK_REMOVED";

void putGeoDataText(const Opened<QeDbGeoData>& geoData, const wchar_t* text)
{
    need(static_cast<bool>(geoData), "qedbOpenObject does not open the GeoData object to write");
    needOk(geoData->setCoordinateSystem(text), "QeDbGeoData::setCoordinateSystem");
}

/// What the transaction of the check changes and removes.
void putFirstState(const Drawing& drawing, QeDbObjectId& geoDataId)
{
    QeDbObjectId id;
    registerApplication(drawing, kTestApplication);
    const Opened<QeDbDictionary> dictionary = namedObjects(drawing, QeDb::kForWrite);
    putXrecord(dictionary, drawing, kRemovedKey, L"first", id);
    putXrecord(dictionary, drawing, kTestKey, L"first", id);
    needOk(dictionary->setXData(extendedData(L"first").get()), "QeDbObject::setXData");
    putGeoDataText(postGeoData(drawing, geoDataId), L"first");
}

void changeFirstState(const Drawing& drawing, const QeDbObjectId& geoDataId)
{
    QeDbObjectId id;
    const Opened<QeDbDictionary> dictionary = namedObjects(drawing, QeDb::kForWrite);
    needOk(dictionary->remove(kRemovedKey, id), "QeDbDictionary::remove");
    putXrecord(dictionary, drawing, kTestKey, L"second", id);
    needOk(dictionary->setXData(extendedData(L"second").get()), "QeDbObject::setXData");
    putGeoDataText(openAs<QeDbGeoData>(geoDataId, QeDb::kForWrite), L"second");
}

void checkAbortingChanges()
{
    const Drawing drawing;
    QeDbTransactionManager& manager = transactions(drawing);
    QeDbObjectId geoDataId;
    putFirstState(drawing, geoDataId);
    need(manager.startTransaction() != nullptr, "QeDbTransactionManager::startTransaction gives null");
    changeFirstState(drawing, geoDataId);
    static_cast<void>(manager.abortTransaction());
    const Opened<QeDbDictionary> dictionary = namedObjects(drawing, QeDb::kForRead);
    expect(hasKey(dictionary, kRemovedKey),
           "QeDbTransactionManager::abortTransaction does not undo QeDbDictionary::remove");
    QeDbObjectId id;
    expectOk(dictionary->getAt(kTestKey, id), "QeDbDictionary::getAt of what was replaced before abortTransaction");
    expect(describeXrecord(drawing, id) == L"300 first\n",
           "QeDbTransactionManager::abortTransaction does not undo QeDbDictionary::setAt under a key that was there");
    expect(describeChain(Chain(dictionary->xData(kTestApplication)).get()) ==
               describeChain(extendedData(L"first").get()),
           "QeDbTransactionManager::abortTransaction does not undo QeDbObject::setXData");
    expect(geoDataText(drawing) == L"first",
           "QeDbTransactionManager::abortTransaction does not undo QeDbGeoData::setCoordinateSystem");
}

void checkAbortingAdditions()
{
    const Drawing drawing;
    QeDbTransactionManager& manager = transactions(drawing);
    need(manager.startTransaction() != nullptr, "QeDbTransactionManager::startTransaction gives null");
    QeDbObjectId id;
    static_cast<void>(postGeoData(drawing, id));
    registerApplication(drawing, kTestApplication);
    static_cast<void>(manager.abortTransaction());
    expect(geoDataText(drawing) == kNone,
           "QeDbTransactionManager::abortTransaction does not undo QeDbGeoData::postToDb");
    expect(!registeredApplications(drawing, QeDb::kForRead)->has(kTestApplication),
           "QeDbTransactionManager::abortTransaction does not undo QeDbRegAppTable::add");
}

void checkCommitting()
{
    const Drawing drawing;
    QeDbTransactionManager& manager = transactions(drawing);
    QeDbObjectId id;
    need(manager.startTransaction() != nullptr, "QeDbTransactionManager::startTransaction gives null");
    putXrecord(namedObjects(drawing, QeDb::kForWrite), drawing, kTestKey, L"text", id);
    expectOk(manager.endTransaction(), "QeDbTransactionManager::endTransaction");
    expect(hasKey(namedObjects(drawing, QeDb::kForRead), kTestKey),
           "QeDbTransactionManager::endTransaction does not keep an addition");
}

void checkHostString()
{
    HostText copy;
    expectOk(qeutNewString(L"text", copy.put()), "qeutNewString");
    expect(orEmpty(copy.get()) == L"text", "qeutNewString gives " + printable(copy.get()));
}

void checkHostBuffer()
{
    constexpr std::size_t kLength = 4096;
    HostBytes buffer;
    expectOk(qeutNewBuffer(buffer.put(), kLength), "qeutNewBuffer");
    expect(static_cast<bool>(buffer), "qeutNewBuffer succeeds and gives null");
    for (std::size_t index = 0; index < kLength; ++index)
        expect(buffer.get()[index] == 0, "qeutNewBuffer gives a buffer that is not all zero");
    expect(reinterpret_cast<std::uintptr_t>(buffer.get()) % alignof(wchar_t) == 0,
           "qeutNewBuffer gives a buffer that is not aligned for wchar_t");
}

void checkReleasingText()
{
    wchar_t* text = nullptr;
    needOk(qeutNewString(L"text", text), "qeutNewString");
    ignoreResult([&] { return qeutDelBuffer(text); });
    expect(text == nullptr, "qeutDelBuffer does not set the pointer to null");
}

void checkResbuf()
{
    const Chain item(qeutNewRb(QeRb::kXdataInteger32));
    expect(static_cast<bool>(item), "qeutNewRb gives null");
    expect(item->rbnext == nullptr, "qeutNewRb gives a resbuf whose next one is not null");
    expect(item->restype == QeRb::kXdataInteger32, "qeutNewRb gives a resbuf of another group code");
    expect(item->resval.rlong == 0, "qeutNewRb gives a resbuf whose value is not zero");
}

void checkResbufList()
{
    std::wstring text = L"text";
    const Chain chain(qeutBuildList(QeRb::kXdataAppName, L"name", QeRb::kText, text.c_str(), QeRb::kListEnd));
    expect(static_cast<bool>(chain), "qeutBuildList gives null");
    text = L"else";
    expect(describeChain(chain.get()) == L"1001 name\n300 text\n",
           "qeutBuildList gives " + printable(describeChain(chain.get())));
}

/// What the host holds tells whether all is released.
void checkReleasingChain()
{
    Chain chain = textChain(L"first");
    chain->rbnext = textChain(L"second").detach();
    chain.reset();
}

// Checks of the spatial-reference library.

void checkLoading()
{
    for (const wchar_t* code : {projectedCode(), geographicCode()}) {
        MadeSystem system;
        expectOk(System::Load(code, system.put()), "CoordinateReferenceSystemDefinition::Load");
        expect(static_cast<bool>(system), "CoordinateReferenceSystemDefinition::Load succeeds and gives null");
    }
    MadeSystem none;
    expect(System::Load(nullptr, none.put()) != Library::statusOk,
           "CoordinateReferenceSystemDefinition::Load of a null code succeeds");
}

void checkUnknownCode()
{
    MadeSystem none;
    const Library::Status status = System::Load(userDefinedCode(), none.put());
    expect(status == Library::statusNotFound,
           answer("CoordinateReferenceSystemDefinition::Load of a code that is not in the catalog", status) +
               ", which is not statusNotFound");
    expect(!none, "CoordinateReferenceSystemDefinition::Load fails and gives a definition");
}

void checkCode()
{
    const std::wstring code = codeOf(loadSystem(projectedCode()).get());
    expect(isSameCode(code, projectedCode()),
           "DefinitionBase::GetCode gives " + printable(code) + " in the place of " + printable(projectedCode()));
}

void expectKind(const wchar_t* code, int kind)
{
    int found = 0;
    expectOk(loadSystem(code)->GetKind(found), "CoordinateReferenceSystemDefinition::GetKind");
    expect(found == kind, "CoordinateReferenceSystemDefinition::GetKind of " + printable(code) + " gives " +
                              number(found) + " in the place of " + number(kind));
}

void checkKinds()
{
    expectKind(projectedCode(), Library::kindProjected);
    expectKind(geographicCode(), Library::kindGeographic);
}

/// The definition xrecord is read only where the codes of system, datum and ellipsoid belong together.
void expectConsistent(const MadeSystem& system, bool hasDatum)
{
    const wchar_t* datumCode = nullptr;
    const wchar_t* ellipsoidCode = nullptr;
    expectOk(system->GetDatumCode(datumCode), "CoordinateReferenceSystemDefinition::GetDatumCode");
    expectOk(system->GetEllipsoidCode(ellipsoidCode), "CoordinateReferenceSystemDefinition::GetEllipsoidCode");
    Made<Library::EllipsoidDefinition> ellipsoid;
    expectOk(Library::CoordinateReferenceSystemUtil::GetEllipsoid(system.get(), ellipsoid.put()),
             "CoordinateReferenceSystemUtil::GetEllipsoid");
    expect(isSameCode(codeOf(ellipsoid.get()), orEmpty(ellipsoidCode)),
           "CoordinateReferenceSystemUtil::GetEllipsoid gives " + printable(codeOf(ellipsoid.get())) +
               ", and GetEllipsoidCode " + printable(ellipsoidCode));
    expect(!hasDatum || !orEmpty(datumCode).empty(),
           "CoordinateReferenceSystemDefinition::GetDatumCode gives no code for a system with a datum");
    if (orEmpty(datumCode).empty())
        return;
    Made<Library::DatumDefinition> datum;
    expectOk(system->GetDatum(datum.put()), "CoordinateReferenceSystemDefinition::GetDatum");
    expect(isSameCode(codeOf(datum.get()), datumCode), "CoordinateReferenceSystemDefinition::GetDatum gives " +
                                                           printable(codeOf(datum.get())) + ", and GetDatumCode " +
                                                           printable(datumCode));
    ellipsoidCode = nullptr;
    expectOk(datum->GetEllipsoidCode(ellipsoidCode), "DatumDefinition::GetEllipsoidCode");
    expect(isSameCode(codeOf(ellipsoid.get()), orEmpty(ellipsoidCode)),
           "DatumDefinition::GetEllipsoidCode gives " + printable(ellipsoidCode) + ", and the system's ellipsoid is " +
               printable(codeOf(ellipsoid.get())));
}

void checkDatumAndEllipsoid()
{
    expectConsistent(loadSystem(projectedCode()), true);
    expectConsistent(loadSystem(geographicCode()), true);
    expectConsistent(userDefinedSystem(), false);
}

void checkDatumBased()
{
    for (const wchar_t* code : {projectedCode(), geographicCode()}) {
        Made<Library::CoordinateReferenceSystemOperation> operation;
        expectOk(Library::CoordinateReferenceSystemOperation::Load(loadSystem(code).get(), operation.put()),
                 "CoordinateReferenceSystemOperation::Load");
        expect(static_cast<bool>(operation), "CoordinateReferenceSystemOperation::Load succeeds and gives null");
        bool datumBased = false;
        expectOk(operation->IsDatumBased(datumBased), "CoordinateReferenceSystemOperation::IsDatumBased");
        expect(datumBased, "CoordinateReferenceSystemOperation::IsDatumBased is false for " + printable(code) +
                               ", which has a datum");
    }
}

void checkArray()
{
    MadeArray array;
    expectOk(Library::DefinitionBaseArray::CreateInstance(array.put()), "DefinitionBaseArray::CreateInstance");
    expect(static_cast<bool>(array), "DefinitionBaseArray::CreateInstance succeeds and gives null");
    expect(array->GetCount() == 0, "DefinitionBaseArray::GetCount of a new array is not 0");
    MadeSystem system = loadSystem(projectedCode());
    expectOk(array->Add(system.get()), "DefinitionBaseArray::Add");
    const System* const added = system.detach();
    expect(array->GetCount() == 1, "DefinitionBaseArray::GetCount is not 1 after DefinitionBaseArray::Add");
    const Made<Library::DefinitionBase> removed(array->Remove(0));
    expect(removed.get() == added, "DefinitionBaseArray::Remove gives another definition than Add was given");
    expect(array->GetCount() == 0, "DefinitionBaseArray::Remove leaves the definition in the array");
}

void checkTexts()
{
    const MadeSystem system = loadSystem(projectedCode());
    const MadeSystem other = loadSystem(geographicCode());
    const wchar_t* code = nullptr;
    const wchar_t* datumCode = nullptr;
    const wchar_t* ellipsoidCode = nullptr;
    needOk(system->GetCode(code), "DefinitionBase::GetCode");
    const std::wstring codeBefore = orEmpty(code);
    needOk(system->GetDatumCode(datumCode), "CoordinateReferenceSystemDefinition::GetDatumCode");
    const std::wstring datumBefore = orEmpty(datumCode);
    needOk(system->GetEllipsoidCode(ellipsoidCode), "CoordinateReferenceSystemDefinition::GetEllipsoidCode");
    const wchar_t* text = nullptr;
    static_cast<void>(other->GetCode(text));
    static_cast<void>(other->GetDatumCode(text));
    static_cast<void>(other->GetEllipsoidCode(text));
    expect(orEmpty(code) == codeBefore, "the text of DefinitionBase::GetCode changes when other texts are asked for");
    expect(orEmpty(datumCode) == datumBefore, "the text of CoordinateReferenceSystemDefinition::GetDatumCode changes "
                                              "when other texts are asked for");
}

Made<Library::DatumDefinition> datumOf(const MadeSystem& system)
{
    Made<Library::DatumDefinition> datum;
    needOk(system->GetDatum(datum.put()), "CoordinateReferenceSystemDefinition::GetDatum");
    need(static_cast<bool>(datum), "CoordinateReferenceSystemDefinition::GetDatum gives null");
    return datum;
}

Made<Library::EllipsoidDefinition> ellipsoidOf(const MadeSystem& system)
{
    Made<Library::EllipsoidDefinition> ellipsoid;
    needOk(Library::CoordinateReferenceSystemUtil::GetEllipsoid(system.get(), ellipsoid.put()),
           "CoordinateReferenceSystemUtil::GetEllipsoid");
    need(static_cast<bool>(ellipsoid), "CoordinateReferenceSystemUtil::GetEllipsoid gives null");
    return ellipsoid;
}

void checkSettingParts()
{
    const MadeSystem system = loadSystem(projectedCode());
    const MadeSystem other = loadSystem(geographicCode());
    Made<Library::DatumDefinition> datum = datumOf(other);
    Made<Library::EllipsoidDefinition> ellipsoid = ellipsoidOf(system);
    const std::wstring ellipsoidCode = codeOf(ellipsoid.get());
    const std::wstring datumCode = codeOf(datum.get());
    need(!isSameCode(datumCode, codeOf(datumOf(system).get())) &&
             !isSameCode(ellipsoidCode, codeOf(ellipsoidOf(other).get())),
         "the hook systems names a projected and a geographic system of the same datum or ellipsoid; name others");
    static_cast<void>(datum->SetEllipsoid(ellipsoid.get()));
    ellipsoid.reset();
    const wchar_t* found = nullptr;
    needOk(datum->GetEllipsoidCode(found), "DatumDefinition::GetEllipsoidCode");
    expect(isSameCode(orEmpty(found), ellipsoidCode), "DatumDefinition::SetEllipsoid leaves the ellipsoid " +
                                                          printable(found) + " in the place of " +
                                                          printable(ellipsoidCode));
    static_cast<void>(system->SetDatum(datum.get()));
    datum.reset();
    found = nullptr;
    needOk(system->GetDatumCode(found), "CoordinateReferenceSystemDefinition::GetDatumCode");
    expect(isSameCode(orEmpty(found), datumCode), "CoordinateReferenceSystemDefinition::SetDatum leaves the datum " +
                                                      printable(found) + " in the place of " + printable(datumCode));
}

constexpr std::size_t kStreamBytes = 1024;

struct StreamBytes {
    std::array<unsigned char, kStreamBytes> bytes{};
    std::size_t length = kStreamBytes;
};

StreamBytes writeStream(const Library::DefinitionBase* definition)
{
    Made<Library::DefinitionStream> stream;
    expectOk(Library::DefinitionStream::CreateInstance(stream.put()), "DefinitionStream::CreateInstance");
    expect(static_cast<bool>(stream), "DefinitionStream::CreateInstance succeeds and gives null");
    expectOk(stream->Add(definition), "DefinitionStream::Add");
    StreamBytes written;
    expectOk(stream->Write(written.bytes.data(), written.length, Library::formatBinary, 0), "DefinitionStream::Write");
    return written;
}

void checkWritingStream()
{
    for (const wchar_t* code : {projectedCode(), geographicCode()}) {
        const StreamBytes written = writeStream(loadSystem(code).get());
        expect(written.length > 1 && written.length <= kStreamBytes,
               "DefinitionStream::Write gives the length " + number(static_cast<long long>(written.length)));
        expect(written.bytes[0] == 0, "the first byte of DefinitionStream::Write is " + number(written.bytes[0]));
    }
}

void checkReadingStream()
{
    const StreamBytes written = writeStream(userDefinedSystem().get());
    Made<Library::DefinitionStream> stream;
    needOk(Library::DefinitionStream::CreateInstance(stream.put()), "DefinitionStream::CreateInstance");
    need(static_cast<bool>(stream), "DefinitionStream::CreateInstance gives null");
    static_cast<void>(stream->Read(written.bytes.data(), written.length, Library::formatBinary, 1));
    MadeArray array;
    expectOk(stream->GetDefinitions(array.put()), "DefinitionStream::GetDefinitions");
    expect(array && array->GetCount() == 1, "DefinitionStream::Read does not read the one definition that was written");
    const std::wstring code = codeOf(takeSystem(array).get());
    expect(isSameCode(code, userDefinedCode()),
           "DefinitionStream::Read reads " + printable(code) + " in the place of " + printable(userDefinedCode()));
}

constexpr std::size_t kTextBytes = 65536;

/// The number of bytes up to and with the NUL unit; 0 without one.
std::size_t lengthWithNul(const std::vector<unsigned char>& bytes)
{
    for (std::size_t index = 0; index + 1 < bytes.size(); index += 2) {
        if (bytes[index] == 0 && bytes[index + 1] == 0)
            return index + 2;
    }
    return 0;
}

std::vector<unsigned char> serialize(const System* system, bool includeDependents = true)
{
    std::vector<unsigned char> bytes(kTextBytes, 0xFF);
    expectOk(Library::DefinitionStream::Serialize_s(system, bytes.data(), bytes.size(), Library::formatText, -1,
                                                    includeDependents),
             "DefinitionStream::Serialize_s");
    bytes.resize(lengthWithNul(bytes));
    return bytes;
}

void checkWritingText()
{
    const std::vector<unsigned char> bytes = serialize(loadSystem(projectedCode()).get());
    expect(bytes.size() > 2, "DefinitionStream::Serialize_s writes no text with a NUL of two bytes");
    std::size_t zeros = 0;
    for (std::size_t index = 1; index < bytes.size(); index += 2)
        zeros += bytes[index] == 0 ? 1U : 0U;
    expect(
        zeros * 2 > bytes.size() / 2,
        "the second bytes of DefinitionStream::Serialize_s are mostly not zero: its text is not UTF-16 little-endian");
}

/// The module writes the GeoData text with dependents, and in SerializeCoordinateSystem without.
void expectReadable(const MadeSystem& system, bool includeDependents)
{
    const std::vector<unsigned char> bytes = serialize(system.get(), includeDependents);
    const std::string call = "DefinitionStream::Deserialize_s of " + printable(codeOf(system.get())) +
                             (includeDependents ? " with dependents" : " without dependents");
    MadeArray array;
    expectOk(
        Library::DefinitionStream::Deserialize_s(array.put(), bytes.data(), bytes.size(), Library::formatAutomatic, -1),
        call.c_str());
    expect(array && (!includeDependents || array->GetCount() > 1),
           call + " does not give " + (array ? "the datum and the ellipsoid beside the system" : "an array"));
    const std::wstring code = codeOf(takeSystem(array).get());
    expect(isSameCode(code, codeOf(system.get())), call + " gives " + printable(code));
}

void checkReadingText()
{
    for (const bool includeDependents : {true, false}) {
        expectReadable(loadSystem(projectedCode()), includeDependents);
        expectReadable(userDefinedSystem(), includeDependents);
    }
}

void checkClasses()
{
    const std::vector<unsigned char> bytes = serialize(loadSystem(projectedCode()).get());
    MadeArray array;
    needOk(
        Library::DefinitionStream::Deserialize_s(array.put(), bytes.data(), bytes.size(), Library::formatAutomatic, -1),
        "DefinitionStream::Deserialize_s");
    int systemCount = 0;
    int datumCount = 0;
    int ellipsoidCount = 0;
    for (int left = array ? array->GetCount() : 0; left > 0; --left) {
        const Made<Library::DefinitionBase> item(array->Remove(0));
        systemCount += dynamic_cast<System*>(item.get()) != nullptr ? 1 : 0;
        datumCount += dynamic_cast<Library::DatumDefinition*>(item.get()) != nullptr ? 1 : 0;
        ellipsoidCount += dynamic_cast<Library::EllipsoidDefinition*>(item.get()) != nullptr ? 1 : 0;
    }
    expect(systemCount == 1 && datumCount == 1 && ellipsoidCount == 1,
           "dynamic_cast finds " + number(systemCount) + " systems, " + number(datumCount) + " datums and " +
               number(ellipsoidCount) + " ellipsoids in a text that holds one of each");
}

void checkWkt()
{
    constexpr std::size_t kCharacters = 4096;
    std::vector<wchar_t> wkt(kCharacters, L'x');
    const Library::Status status = Library::FormatConverter::DefinitionToWkt_s(
        loadSystem(projectedCode()).get(), Library::wktFlavorDefault, wkt.data(), wkt.size());
    expect(status == Library::statusOk || status == Library::statusInexact,
           answer("FormatConverter::DefinitionToWkt_s", status));
    const std::wstring_view text(wkt.data(), wkt.size());
    expect(text.find(L'\0') != std::wstring_view::npos, "FormatConverter::DefinitionToWkt_s writes no NUL");
    expect(text.front() != L'\0', "FormatConverter::DefinitionToWkt_s succeeds and writes no text");
}

template <class Definition>
bool isReversible(const wchar_t* name, const std::string& type)
{
    Made<Definition> definition;
    static_cast<void>(Definition::Load(name, definition.put()));
    expect(static_cast<bool>(definition), type + "::Load of " + printable(name) + " gives null");
    bool reversible = false;
    expectOk(definition->IsReversible(reversible), (type + "::IsReversible").c_str());
    return reversible;
}

template <class Definition>
void expectUnknown(const char* call)
{
    Made<Definition> definition;
    static_cast<void>(Definition::Load(L"PORT_CHECK", definition.put()));
    expect(!definition, std::string(call) + " gives a definition of an unknown name");
}

void checkTransformations()
{
    using Definition = Library::GeodeticTransformationDefinition;
    expectUnknown<Definition>("GeodeticTransformationDefinition::Load");
    const wchar_t* const reversible = systems().reversibleTransformation;
    const wchar_t* const irreversible = systems().irreversibleTransformation;
    need(reversible != nullptr || irreversible != nullptr, "the hook systems names no geodetic transformation");
    expect(reversible == nullptr || isReversible<Definition>(reversible, "GeodeticTransformationDefinition"),
           "GeodeticTransformationDefinition::IsReversible is false for " + printable(reversible));
    expect(irreversible == nullptr || !isReversible<Definition>(irreversible, "GeodeticTransformationDefinition"),
           "GeodeticTransformationDefinition::IsReversible is true for " + printable(irreversible));
}

void checkPaths()
{
    using Definition = Library::GeodeticPathDefinition;
    expectUnknown<Definition>("GeodeticPathDefinition::Load");
    const wchar_t* const reversible = systems().reversiblePath;
    need(reversible != nullptr, "the hook systems names no geodetic path");
    expect(isReversible<Definition>(reversible, "GeodeticPathDefinition"),
           "GeodeticPathDefinition::IsReversible is false for " + printable(reversible));
}

/// The name, where the product's class has a call of this name; otherwise what it is given.
template <class Info>
std::wstring nameOf(const Info& info, const std::wstring& otherwise)
{
    if constexpr (requires { std::wstring(info.GetName()); })
        return orEmpty(info.GetName());
    else
        return otherwise;
}

/// The same of the kind.
template <class Info>
int kindOf(const Info& info, int otherwise)
{
    if constexpr (requires { static_cast<int>(info.GetKind()); })
        return static_cast<int>(info.GetKind());
    else
        return otherwise;
}

void checkTransformationInfo()
{
    Made<Library::TransformationInfo> info;
    expectOk(Library::TransformationInfo::CreateInstance(info.put()), "TransformationInfo::CreateInstance");
    expect(static_cast<bool>(info), "TransformationInfo::CreateInstance succeeds and gives null");
    expectOk(info->SetName(L"name"), "TransformationInfo::SetName");
    expect(nameOf(*info.get(), L"name") == L"name", "TransformationInfo::SetName does not keep the name");
    for (const int kind : {2, 1, 0}) {
        expectOk(info->SetKind(kind), "TransformationInfo::SetKind");
        expect(kindOf(*info.get(), kind) == kind, "TransformationInfo::SetKind does not keep the kind");
    }
}

// Checks of the foundation library, with the module's own items and collections.

using Item = Cs::OrvelTransformationConfigItem;
using Collection = Cs::OrvelTransformationConfigItemCollection;

Ptr<Item> newItem(const wchar_t* source, const wchar_t* target, const wchar_t* name)
{
    Ptr<Item> item(Item::CreateInstance());
    need(item.get() != nullptr, "OrvelTransformationConfigItem::CreateInstance gives null");
    item->SetSourceCs(source);
    item->SetTargetCs(target);
    item->SetName(name);
    item->SetType(2);
    return item;
}

Ptr<Collection> newCollection()
{
    Ptr<Collection> collection(Collection::CreateInstance());
    need(collection.get() != nullptr, "OrvelTransformationConfigItemCollection::CreateInstance gives null");
    return collection;
}

/// Tells when it is disposed. The checks own it.
class Probe final : public FqGuardDisposable {
public:
    bool isDisposed = false;

protected:
    void Dispose() override { isDisposed = true; }
};

void checkFirstReference()
{
    Probe probe;
    static_cast<void>(probe.Release());
    expect(probe.isDisposed, "FqDisposable::Release of a new object does not dispose it");
}

void checkReferences()
{
    Probe probe;
    static_cast<void>(probe.AddRef());
    static_cast<void>(probe.Release());
    expect(!probe.isDisposed, "FqDisposable::Release disposes an object that has another reference");
    static_cast<void>(probe.Release());
    expect(probe.isDisposed, "FqDisposable::Release of the last reference does not dispose the object");
}

class ProbeCollection final : public FqDisposableCollection {};

void checkAddingItem()
{
    Probe probe;
    const Ptr<ProbeCollection> collection(new ProbeCollection);
    static_cast<void>(collection->Add(&probe));
    expect(collection->GetCount() == 1, "FqDisposableCollection::Add does not append the item");
    static_cast<void>(probe.Release());
    expect(!probe.isDisposed, "FqDisposableCollection::Add takes no reference of its own");
}

void checkGettingItem()
{
    const Ptr<Collection> collection = newCollection();
    collection->Add(newItem(L"A", L"B", L"first").get());
    collection->Add(newItem(L"A", L"B", L"second").get());
    for (int round = 0; round < 3; ++round) {
        const Ptr<FqDisposable> found(collection->GetItem(1));
        auto* const item = dynamic_cast<Item*>(found.get());
        expect(item != nullptr && orEmpty(item->GetName()) == L"second",
               "FqDisposableCollection::GetItem(1) does not give the second item");
    }
    expect(Ptr<FqDisposable>(collection->GetItem(2)).get() == nullptr,
           "FqDisposableCollection::GetItem gives an item out of range");
}

void checkReleasingItems()
{
    for (const bool clear : {true, false}) {
        const std::string call = clear ? "FqDisposableCollection::Clear" : "the end of an FqDisposableCollection";
        Probe probe;
        {
            const Ptr<ProbeCollection> collection(new ProbeCollection);
            static_cast<void>(collection->Add(&probe));
            if (clear) {
                ignoreResult([&] { return collection->Clear(); });
                expect(collection->GetCount() == 0, call + " leaves an item in the collection");
            }
        }
        expect(!probe.isDisposed, call + " releases an item more than once");
        static_cast<void>(probe.Release());
        expect(probe.isDisposed, call + " does not release the item");
    }
}

void checkPtr()
{
    Probe probe;
    static_cast<void>(probe.AddRef());
    {
        const Ptr<Probe> pointer(&probe);
        expect(pointer.get() == &probe, "Ptr::get gives another object");
    }
    expect(!probe.isDisposed, "a Ptr releases more than its one reference");
    static_cast<void>(probe.Release());
    expect(probe.isDisposed, "a Ptr adds a reference to the one that it takes over, or does not release it at its end");
}

// Checks of the system's calls.

void checkClassIdentifiers()
{
    const wchar_t* const text = L"{3C00EA4B-0B84-11D2-9DE2-080009ACE18E}";
    const wchar_t* const lowerCase = L"{3c00ea4b-0b84-11d2-9de2-080009ace18e}";
    constexpr std::array<unsigned char, 8> kLast{0x9D, 0xE2, 0x08, 0x00, 0x09, 0xAC, 0xE1, 0x8E};
    CLSID identifier{};
    expect(CLSIDFromString(lowerCase, &identifier) == S_OK, "CLSIDFromString does not answer S_OK");
    expect(identifier.Data1 == 0x3C00EA4BU && identifier.Data2 == 0x0B84U && identifier.Data3 == 0x11D2U &&
               std::memcmp(identifier.Data4, kLast.data(), kLast.size()) == 0,
           "CLSIDFromString gives another identifier than its text");
    wchar_t* made = nullptr;
    expect(StringFromCLSID(identifier, &made) == S_OK && made != nullptr, "StringFromCLSID gives no text");
    const std::wstring copy = made;
    ignoreResult([&] { return CoTaskMemFree(made); });
    expect(copy == text, "StringFromCLSID gives " + printable(copy) + " in the place of " + printable(text));
    expect(CLSIDFromString(L"no identifier", &identifier) != S_OK, "CLSIDFromString of another text answers S_OK");
}

void checkComparing()
{
    expect(_wcsicmp(L"EPSG:1a", L"epsg:1A") == 0, "_wcsicmp does not ignore case");
    expect(_wcsicmp(L"EPSG:1", L"EPSG:12") != 0, "_wcsicmp finds a text equal to a longer one");
    expect(_wcsnicmp(L"EPSG:1x", L"epsg:1y", 6) == 0, "_wcsnicmp compares more characters than it was told");
    expect(_wcsnicmp(L"EPSG:1x", L"epsg:1y", 7) != 0, "_wcsnicmp compares fewer characters than it was told");
}

constexpr std::size_t kPathCharacters = 260;

/// Empty when the variable is not set or does not fit.
std::wstring settingsFolder()
{
    std::array<wchar_t, kPathCharacters> folder{};
    std::size_t required = 0;
    if (_wgetenv_s(&required, folder.data(), folder.size(), kSettingsFolderVariable) != 0)
        return {};
    return folder.data();
}

std::wstring needSettingsFolder()
{
    std::wstring folder = settingsFolder();
    need(!folder.empty(), "set VORLEN_USER_DICTIONARY_PATH to an empty folder, so that no user's settings are changed");
    return folder;
}

void checkEnvironment()
{
    std::array<wchar_t, kPathCharacters> value{};
    std::size_t required = 0;
    const auto unset = _wgetenv_s(&required, value.data(), value.size(), L"PORT_CHECK_NO_SUCH_VARIABLE");
    expect(unset != 0 || value[0] == L'\0', "_wgetenv_s gives a value for a variable that is not set");
    expect(std::getenv("VORLEN_USER_DICTIONARY_PATH") == nullptr || !settingsFolder().empty(),
           "_wgetenv_s gives no value for VORLEN_USER_DICTIONARY_PATH, which is set");
    const std::wstring folder = needSettingsFolder();
    const auto tooLong = _wgetenv_s(&required, value.data(), 2, kSettingsFolderVariable);
    expect(tooLong != 0 || value[0] == L'\0',
           "_wgetenv_s answers 0 for a value that does not fit: " + printable(folder));
}

void checkSpecialFolder()
{
    std::array<wchar_t, kPathCharacters> path{};
    if (!SHGetSpecialFolderPathW(nullptr, path.data(), CSIDL_LOCAL_APPDATA, FALSE))
        return;
    expect(path[0] != L'\0', "SHGetSpecialFolderPathW succeeds and gives an empty path");
    expect(std::wstring_view(path.data()).back() != L'\\',
           "SHGetSpecialFolderPathW gives a path that ends in a backslash");
}

void writeTwoLines(const std::wstring& path)
{
    std::FILE* const file = _wfsopen(path.c_str(), L"wt", _SH_DENYNO);
    expect(file != nullptr, "_wfsopen does not open " + printable(path) + " to write");
    const bool written = std::fputs("a\nb\n", file) >= 0;
    expect(std::fclose(file) == 0 && written, "a stream of _wfsopen cannot be written");
}

std::string readText(const std::wstring& path)
{
    constexpr std::size_t kCapacity = 16;
    std::FILE* const file = _wfsopen(path.c_str(), L"rt", _SH_DENYNO);
    expect(file != nullptr, "_wfsopen does not open " + printable(path) + " to read");
    std::array<char, kCapacity> text{};
    const std::size_t length = std::fread(text.data(), 1, text.size(), file);
    static_cast<void>(std::fclose(file));
    return std::string(text.data(), length);
}

void checkTextFiles()
{
    const std::wstring folder = needSettingsFolder();
    const std::filesystem::path file = std::filesystem::path(folder) / "port_check.txt";
    writeTwoLines(folder + L"\\port_check.txt");
    const std::string text = readText(folder + L"\\port_check.txt");
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    stream.close();
    std::error_code ignored;
    std::filesystem::remove(file, ignored);
    expect(text == "a\nb\n", "a stream of _wfsopen with the mode rt does not end lines with LF in the program");
    expect(bytes == "a\r\nb\r\n", "a stream of _wfsopen with the mode wt does not end lines with CR LF in the file");
    expect(_wfsopen((folder + L"\\no such file").c_str(), L"rt", _SH_DENYNO) == nullptr,
           "_wfsopen opens a file to read that is not there");
}

void checkCodePage()
{
    const char* const utf8 = "\xC3\xA9!"; // a two-byte sequence, then one byte
    std::array<wchar_t, 8> wide{};
    expect(MultiByteToWideChar(CP_UTF8, 0, utf8, -1, nullptr, 0) == 3,
           "MultiByteToWideChar without an output does not give the number of characters, the NUL included");
    expect(MultiByteToWideChar(CP_UTF8, 0, utf8, -1, wide.data(), 3) == 3 &&
               std::wstring_view(wide.data()) == L"\u00E9!",
           "MultiByteToWideChar gives other characters");
    expect(MultiByteToWideChar(CP_UTF8, 0, utf8, -1, wide.data(), 2) == 0,
           "MultiByteToWideChar with an output that is too short does not give 0");
    std::array<char, 8> bytes{};
    expect(WideCharToMultiByte(CP_UTF8, 0, wide.data(), 2, nullptr, 0, nullptr, nullptr) == 3,
           "WideCharToMultiByte without an output does not give the number of bytes");
    expect(WideCharToMultiByte(CP_UTF8, 0, wide.data(), 2, bytes.data(), 3, nullptr, nullptr) == 3 &&
               std::string_view(bytes.data()) == utf8,
           "WideCharToMultiByte gives other bytes");
    expect(WideCharToMultiByte(CP_UTF8, 0, wide.data(), 2, bytes.data(), 2, nullptr, nullptr) == 0,
           "WideCharToMultiByte with an output that is too short does not give 0");
    expect(MultiByteToWideChar(CP_UTF8, 0, "\xFF", -1, wide.data(), 2) == 2 && wide[0] == L'\uFFFD',
           "MultiByteToWideChar does not give U+FFFD for what is not UTF-8");
}

// Registry keys.

void releaseKey(std::remove_pointer_t<HKEY>* key)
{
    static_cast<void>(RegCloseKey(key));
}

using RegistryKey = Owned<std::remove_pointer_t<HKEY>, releaseKey>;

std::wstring registryPath()
{
    const QeDbHostApplicationServices* const services = qedbHostApplicationServices();
    need(services != nullptr, "qedbHostApplicationServices gives null");
    const std::wstring root = orEmpty(services->getUserRegistryProductRootKey());
    expect(root.empty() || root.back() != L'\\', "QeDbHostApplicationServices::getUserRegistryProductRootKey gives " +
                                                     printable(root) + ", which ends in a backslash");
    return root + L"\\Applications\\OrvelCoordinateSystem\\Transformation";
}

RegistryKey makeKey(const std::wstring& path)
{
    RegistryKey key;
    const auto result = RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE,
                                        nullptr, &key.put(), nullptr);
    if (result != ERROR_SUCCESS)
        static_cast<void>(key.detach());
    return key;
}

RegistryKey openKey(const std::wstring& path)
{
    RegistryKey key;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, &key.put()) != ERROR_SUCCESS)
        static_cast<void>(key.detach());
    return key;
}

/// The names of the key's values. The enumeration must end, or the module would not come back from clearing.
std::vector<std::wstring> valueNames(const RegistryKey& key)
{
    constexpr DWORD kMost = 1000;
    std::vector<std::wstring> names;
    for (DWORD index = 0; index < kMost; ++index) {
        std::array<wchar_t, 2048> name{};
        DWORD length = 2048;
        const auto result = RegEnumValueW(key.get(), index, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
        if (result == ERROR_NO_MORE_ITEMS)
            return names;
        names.emplace_back(name.data());
    }
    throw Failed{"RegEnumValueW does not answer ERROR_NO_MORE_ITEMS after 1,000 values"};
}

void checkRegistryKeys()
{
    const std::wstring path = registryPath();
    expect(static_cast<bool>(makeKey(path)), "RegCreateKeyExW does not make the key " + printable(path));
    expect(static_cast<bool>(openKey(path)), "RegOpenKeyExW does not open the key that RegCreateKeyExW made");
    expect(!openKey(path + L"\\PORT_CHECK"), "RegOpenKeyExW opens a key that is not there");
}

void checkRegistryValues()
{
    const RegistryKey key = openKey(registryPath());
    need(static_cast<bool>(key), "RegOpenKeyExW does not open the key of the settings");
    static_cast<void>(valueNames(key));
}

/// Throws NotTried where the registry cannot set values, which the module itself never does.
void setValue(const RegistryKey& key, const wchar_t* name)
{
    const std::wstring text = L"value";
    const auto length = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    need(RegSetValueExW(key.get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()), length) ==
             ERROR_SUCCESS,
         "RegSetValueExW, which the module does not call, sets no value to delete");
}

/// The key of the settings, open to set, to enumerate and to delete, and without values that somebody needs.
struct FreeRegistry {
    RegistryKey writer = makeKey(registryPath());
    RegistryKey reader = openKey(registryPath());

    FreeRegistry()
    {
        need(static_cast<bool>(writer) && static_cast<bool>(reader),
             "the registry's key of the settings cannot be opened");
        need(valueNames(reader).empty(), "the registry holds somebody's configuration, which would be cleared");
    }
};

/// Without a value there is nothing to check, unless RegQueryValueExW finds one that RegEnumValueW does not name.
void needNames(const std::vector<std::wstring>& names, const RegistryKey& reader)
{
    DWORD length = 0;
    const bool isThere =
        RegQueryValueExW(reader.get(), L"Item1", nullptr, nullptr, nullptr, &length) == ERROR_SUCCESS && length != 0;
    expect(!names.empty() || !isThere, "RegEnumValueW does not name a value that RegQueryValueExW finds");
    need(!names.empty(), "there is no value: RegSetValueExW is a stub, or RegEnumValueW names none");
}

/// Deletes the values that a check set, at the end of the scope.
struct DeletedValues {
    const RegistryKey& writer;

    explicit DeletedValues(const FreeRegistry& registry) : writer(registry.writer) {}
    DeletedValues(const DeletedValues&) = delete;
    DeletedValues& operator=(const DeletedValues&) = delete;
    ~DeletedValues()
    {
        static_cast<void>(RegDeleteValueW(writer.get(), L"Item1"));
        static_cast<void>(RegDeleteValueW(writer.get(), L"Item2"));
    }
};

void checkNamesOfValues()
{
    const FreeRegistry registry;
    const DeletedValues atLast(registry);
    setValue(registry.writer, L"Item1");
    setValue(registry.writer, L"Item2");
    std::vector<std::wstring> names = valueNames(registry.reader);
    needNames(names, registry.reader);
    std::sort(names.begin(), names.end());
    expect(names == std::vector<std::wstring>{L"Item1", L"Item2"},
           "RegEnumValueW does not name the values Item1 and Item2 once each");
}

void checkDeletingValue()
{
    const FreeRegistry registry;
    const DeletedValues atLast(registry);
    setValue(registry.writer, L"Item1");
    needNames(valueNames(registry.reader), registry.reader);
    expect(RegDeleteValueW(registry.writer.get(), L"Item1") == ERROR_SUCCESS,
           "RegDeleteValueW does not answer success");
    expect(valueNames(registry.reader).empty(), "RegEnumValueW names a value that RegDeleteValueW deleted");
}

// Checks of the module in the product.

void checkAssigning()
{
    const Drawing drawing;
    needServices(drawing);
    expectOk(Cs::SetCoordinateSystem(projectedCode(), drawing.database()), "SetCoordinateSystem of a catalog's code");
    const Stored stored = readStored(drawing);
    expect(stored.geoData != kNone && !stored.geoData.empty(),
           "SetCoordinateSystem leaves no text in the GeoData object");
    expect(stored.legacyRecord == kNone && stored.definitionRecord == kNone,
           "SetCoordinateSystem writes the forms of an older drawing format");
    needOk(Cs::SetCoordinateSystem(geographicCode(), drawing.database()), "SetCoordinateSystem of another code");
    expectAssigned(drawing, geographicCode());
}

void checkUnknownAssignment()
{
    const Drawing drawing;
    needAssigned(drawing, loadSystem(projectedCode()).get());
    const Stored before = readStored(drawing);
    const Qeapp::ErrorStatus result = Cs::SetCoordinateSystem(userDefinedCode(), drawing.database());
    expect(result == Qeapp::eInvalidInput, answer("SetCoordinateSystem of a code that is not in the catalog", result));
    const std::string changed = difference(before, readStored(drawing));
    expect(changed.empty(), "SetCoordinateSystem is refused and changes the drawing: " + changed);
}

void checkReadingCode()
{
    const Drawing drawing;
    needAssigned(drawing, loadSystem(projectedCode()).get());
    HostText code;
    expectOk(Cs::GetCoordinateSystem(code.put(), drawing.database()), "GetCoordinateSystem (code)");
    expect(isSameCode(orEmpty(code.get()), projectedCode()),
           "GetCoordinateSystem (code) gives " + printable(code.get()));
}

void checkReadingDefinition()
{
    const Drawing drawing;
    for (const bool inCatalog : {true, false}) {
        const MadeSystem system = inCatalog ? loadSystem(projectedCode()) : userDefinedSystem();
        needAssigned(drawing, system.get());
        MadeSystem found;
        bool known = !inCatalog;
        Library::Status status = Library::statusFailed;
        expectOk(Cs::GetCoordinateSystem(found.put(), &known, drawing.database(), &status),
                 "GetCoordinateSystem (definition)");
        expect(isSameCode(codeOf(found.get()), codeOf(system.get())),
               "GetCoordinateSystem (definition) gives " + printable(codeOf(found.get())));
        expect(known == inCatalog, inCatalog ? "the catalog does not know a system that it loaded"
                                             : "the catalog knows the user-defined system");
        expect(status == (inCatalog ? Library::statusOk : Library::statusNotFound),
               "the status of GetCoordinateSystem (definition) is " + number(static_cast<int>(status)));
    }
}

void checkReadingArray()
{
    const Drawing drawing;
    needAssigned(drawing, loadSystem(projectedCode()).get());
    MadeArray array;
    expectOk(Cs::GetCoordinateSystem(array.put(), drawing.database()), "GetCoordinateSystem (array)");
    expect(array && array->GetCount() == 3,
           "GetCoordinateSystem (array) does not give the system, its datum and its ellipsoid");
    expect(isSameCode(codeOf(takeSystem(array).get()), projectedCode()),
           "GetCoordinateSystem (array) gives another system");
}

void checkWorkingDrawing()
{
    const Drawing drawing;
    needServices(drawing);
    expectOk(Cs::SetCoordinateSystem(projectedCode(), nullptr), "SetCoordinateSystem without a database");
    expectAssigned(drawing, projectedCode());
}

void checkBlocks()
{
    HostBytes probe;
    need(qeutNewBuffer(probe.put(), 1) == Qeapp::eOk && probe, "qeutNewBuffer gives no buffer");
    for (const QeDb::QeDbDwgVersion version : {kLegacyFormat, kNewestFormat}) {
        HostBytes bytes;
        int length = -1;
        const bool isLegacy = version == kLegacyFormat;
        const std::string suffix =
            isLegacy ? " in version 29 (see DefinitionStream::Write and Read)"
                     : " in version 33 (see DefinitionStream::Serialize_s without dependents and Deserialize_s)";
        expectOk(Cs::SerializeCoordinateSystem(userDefinedSystem().get(), bytes.put(), length, version),
                 ("SerializeCoordinateSystem" + suffix).c_str());
        MadeArray array;
        expectOk(Cs::DeserializeCoordinateSystem(array.put(), bytes.get(), length),
                 ("DeserializeCoordinateSystem" + suffix).c_str());
        const std::wstring code = codeOf(takeSystem(array).get());
        expect(isSameCode(code, userDefinedCode()), "DeserializeCoordinateSystem" + suffix + " gives " +
                                                        printable(code) + " in the place of " +
                                                        printable(userDefinedCode()));
    }
}

/// Writes its notices into a log that several share.
class Recorder final : public Cs::OrvelCoordinateSystemReactor {
public:
    Recorder(std::vector<std::wstring>& log, const wchar_t* name) : log_(&log), name_(name)
    {
        needOk(Cs::AddCoordinateSystemReactor(this), "AddCoordinateSystemReactor");
    }
    Recorder(const Recorder&) = delete;
    Recorder& operator=(const Recorder&) = delete;
    ~Recorder() override { static_cast<void>(Cs::RemoveCoordinateSystemReactor(this)); }

    bool vetoes = false;

    bool CoordinateSystemWillChange(QeDbDatabase* /*db*/, const wchar_t* const name) override
    {
        add(L"asked", name);
        return !vetoes;
    }
    void CoordinateSystemChanged(QeDbDatabase* /*db*/, const wchar_t* const name) override { add(L"changed", name); }
    void CoordinateSystemChangeVetoed(QeDbDatabase* /*db*/, const wchar_t* const name) override
    {
        add(L"vetoed", name);
    }
    void CsTransformationChanged() override { log_->push_back(name_ + L" transformation"); }

private:
    void add(const wchar_t* event, const wchar_t* code)
    {
        log_->push_back(name_ + L' ' + event + L' ' + (code != nullptr ? code : L"(removal)"));
    }

    std::vector<std::wstring>* log_;
    std::wstring name_;
};

using Notices = std::vector<std::wstring>;

void expectNotices(const Notices& found, const Notices& expected)
{
    std::size_t index = 0;
    while (index < found.size() && index < expected.size() && isSameCode(found[index], expected[index]))
        ++index;
    const auto shown = [index](const Notices& notices) {
        return index < notices.size() ? printable(notices[index]) : std::string("none");
    };
    expect(index == found.size() && index == expected.size(), "notice " + number(static_cast<long long>(index) + 1) +
                                                                  " is " + shown(found) + ", expected " +
                                                                  shown(expected));
}

void checkVeto()
{
    const Drawing drawing;
    needAssigned(drawing, loadSystem(projectedCode()).get());
    const Stored before = readStored(drawing);
    Notices notices;
    Recorder first(notices, L"A");
    const Recorder second(notices, L"B");
    first.vetoes = true;
    const std::wstring code = geographicCode();
    const Qeapp::ErrorStatus result = Cs::SetCoordinateSystem(code.c_str(), drawing.database());
    expect(result == Qeapp::eVetoed, answer("SetCoordinateSystem with a veto", result) + " in the place of 325");
    expectNotices(notices, {L"A asked " + code, L"A vetoed " + code, L"B vetoed " + code});
    const std::string changed = difference(before, readStored(drawing));
    expect(changed.empty(), "a vetoed assignment changes the drawing: " + changed);
}

void checkNotices()
{
    const Drawing drawing;
    needServices(drawing);
    Notices notices;
    const Recorder first(notices, L"A");
    const Recorder second(notices, L"B");
    const std::wstring code = projectedCode();
    needOk(Cs::SetCoordinateSystem(code.c_str(), drawing.database()), "SetCoordinateSystem");
    expectNotices(notices,
                  {L"A asked " + code, L"B asked " + code, L"A asked (removal)", L"B asked (removal)",
                   L"A changed (removal)", L"B changed (removal)", L"A changed " + code, L"B changed " + code});
}

void checkClearing()
{
    const Drawing drawing;
    needAssigned(drawing, loadSystem(projectedCode()).get());
    expectOk(Cs::ClearCoordinateSystem(drawing.database()), "ClearCoordinateSystem");
    expect(storesNoSystem(readStored(drawing)), "ClearCoordinateSystem leaves a stored form in the drawing");
    expectAssigned(drawing, kNone);
}

void checkClearingLegacyForms()
{
    const Drawing drawing;
    needAssigned(drawing, userDefinedSystem().get());
    needOk(Cs::ApplyCoordinateSystemStorageVersion(drawing.database(), kLegacyFormat),
           "ApplyCoordinateSystemStorageVersion");
    expectOk(Cs::ClearCoordinateSystem(drawing.database()), "ClearCoordinateSystem");
    const Stored stored = readStored(drawing);
    expect(stored.legacyRecord == kNone,
           "ClearCoordinateSystem leaves the extended data " + printable(stored.legacyRecord));
    expect(stored.definitionRecord == kNone, "ClearCoordinateSystem leaves the definition xrecord in the dictionary");
    expect(stored.geoData == kNone || stored.geoData.empty(), "ClearCoordinateSystem leaves a GeoData text");
}

/// To version 29 and back to 33, through the product's own save.
void checkFormats(const MadeSystem& system)
{
    const Drawing drawing;
    needAssigned(drawing, system.get());
    const std::wstring code = codeOf(system.get());
    const Stored newest = readStored(drawing);
    expect(PortCheck::prepareForSave(drawing.database(), kLegacyFormat),
           "the hook prepareForSave fails for version 29 and " + printable(code));
    const Stored legacy = readStored(drawing);
    expect(legacy.legacyRecord == std::wstring(L"1001 ") + kLegacyApplication + L"\n1000 " + code + L'\n',
           "a save in version 29 leaves the legacy projection record " + printable(legacy.legacyRecord) +
               ": see whether the save calls the decomposition reactors, and QeDbObject::setXData");
    expect(legacy.definitionRecord.starts_with(L"1071 1\n1002 {\n310 "),
           "a save in version 29 writes the definition xrecord " + printable(legacy.definitionRecord));
    expectAssigned(drawing, code);
    expect(PortCheck::prepareForSave(drawing.database(), kNewestFormat),
           "the hook prepareForSave fails for version 33 and " + printable(code));
    const Stored again = readStored(drawing);
    expect(again.legacyRecord == kNone && again.definitionRecord == kNone,
           "a save in version 33 leaves the forms of version 29 in the drawing");
    expect(!again.geoData.empty() && again.geoData != kNone, "a save in version 33 leaves no GeoData text");
    expectAssigned(drawing, code);
}

void checkFormatsOfCatalogSystems()
{
    checkFormats(loadSystem(projectedCode()));
    checkFormats(loadSystem(geographicCode()));
}

void checkFormatsOfUserDefinedSystem()
{
    checkFormats(userDefinedSystem());
}

/// Whether a save in version 29 writes the legacy form, as it does when the module's reactor is registered.
bool savesLegacyForm()
{
    const Drawing drawing;
    needAssigned(drawing, loadSystem(projectedCode()).get());
    need(PortCheck::prepareForSave(drawing.database(), kLegacyFormat), "the hook prepareForSave fails for version 29");
    return readStored(drawing).legacyRecord != kNone;
}

/// Ends every save with a failure.
class FailingReactor final : public QeDbDecompositionReactor {
public:
    FailingReactor() : manager_(qedbGetDecompositionManager())
    {
        need(manager_ != nullptr, "qedbGetDecompositionManager gives null");
        ignoreResult([&] { return manager_->addReactor(this); });
    }
    FailingReactor(const FailingReactor&) = delete;
    FailingReactor& operator=(const FailingReactor&) = delete;
    virtual ~FailingReactor() { remove(); }

    void remove()
    {
        if (manager_ != nullptr)
            static_cast<void>(manager_->removeReactor(this));
        manager_ = nullptr;
    }

    Qeapp::ErrorStatus decomposeForSave(QeDbDatabase* /*database*/, QeDb::QeDbDwgVersion /*version*/,
                                        QeDbSaveErrorRecorder* errors, QeDbSaveErrorMessageRecorder* messages) override
    {
        wasCalled = true;
        if (errors != nullptr)
            return errors->recordError(Qeapp::eInvalidInput);
        return messages != nullptr ? messages->recordError(Qeapp::eInvalidInput, L"") : Qeapp::eInvalidInput;
    }

    bool wasCalled = false;

private:
    QeDbDecompositionManager* manager_;
};

void checkFailedSave()
{
    static_cast<void>(savesLegacyForm()); // or it would not be the reactor that makes the save fail
    const Drawing drawing;
    needAssigned(drawing, loadSystem(projectedCode()).get());
    const Stored before = readStored(drawing);
    FailingReactor reactor;
    const bool saved = PortCheck::prepareForSave(drawing.database(), kLegacyFormat);
    expect(reactor.wasCalled, "the save does not call a reactor that QeDbDecompositionManager::addReactor was given");
    expect(!saved, "the save succeeds though a reactor answered and recorded a failure");
    const std::string changed = difference(before, readStored(drawing));
    expect(changed.empty(), "the failed save is not undone: " + changed);
}

void checkRemovedReactor()
{
    const Drawing drawing;
    FailingReactor reactor;
    reactor.remove();
    static_cast<void>(PortCheck::prepareForSave(drawing.database(), kLegacyFormat));
    expect(!reactor.wasCalled, "a save calls a reactor that QeDbDecompositionManager::removeReactor took out");
}

void checkVersionOfLoader()
{
    need(loadModule(), "the product offers no hook loadModule");
    expect(qerxGetApiVersion() == 0x00180000, "qerxGetApiVersion answers another number than 0x00180000");
}

void checkLoadingModule()
{
    const std::string fault = faultOfDynamicLinker();
    expect(fault.empty(), fault + ", so that the module would end the program when it is loaded");
    need(loadModule(), "the product offers no hook loadModule");
    expect(savesLegacyForm(), "a save in version 29 does not reach the module: see the message 1 to qerxEntryPoint, "
                              "qedbGetDecompositionManager and QeDbDecompositionManager::addReactor");
}

/// Loads the module again at the end of the scope, for the checks that follow.
struct LoadedAgain {
    LoadedAgain() = default;
    LoadedAgain(const LoadedAgain&) = delete;
    LoadedAgain& operator=(const LoadedAgain&) = delete;
    ~LoadedAgain() { static_cast<void>(loadModule()); }
};

void checkUnloadingModule()
{
    const LoadedAgain atLast;
    need(loadModule(), "the product offers no hook loadModule");
    need(PortCheck::unloadModule(), "the hook unloadModule answers false: it is not offered, or the module is locked "
                                    "(see QeRxDynamicLinker::unlockApplication)");
    const bool reached = savesLegacyForm();
    expect(loadModule(), "the module cannot be loaded again");
    expect(!reached, "a save reaches the module after the message 2 to qerxEntryPoint: see "
                     "QeDbDecompositionManager::removeReactor");
    expect(savesLegacyForm(), "a save does not reach the module after it was loaded again");
}

// Checks of the transformation configuration.

constexpr auto kInDrawing = Cs::CsTransformationConfigTargetType::Drawing;
constexpr auto kOfUser = Cs::CsTransformationConfigTargetType::User;

constexpr int kPath = 1;
constexpr int kTransformation = 2;

std::wstring itemText(const wchar_t* source, const wchar_t* target, const wchar_t* name, int type = kTransformation)
{
    const Ptr<Item> item = newItem(source, target, name);
    item->SetType(type);
    return item->ToXmlString();
}

/// The configuration of the target; "none" where it has none.
std::wstring configuration(Cs::CsTransformationConfigTargetType target)
{
    wchar_t* text = nullptr;
    if (!Cs::GetCsTransformationConfig(text, target))
        return kNone; // the text is not to be released
    const HostText owned(text);
    return orEmpty(text);
}

/// Fails unless the item of that name and type is found; an empty name stands for none.
void expectFound(const wchar_t* source, const wchar_t* target, const std::wstring& name, int type)
{
    const Made<Library::TransformationInfo> info(Cs::GetCsConfiguredTransformationInfo(source, target));
    expect(static_cast<bool>(info) == !name.empty(), std::string("GetCsConfiguredTransformationInfo finds ") +
                                                         (info ? "what it should not" : "nothing") + " from " +
                                                         printable(source) + " to " + printable(target));
    if (!info)
        return;
    const std::wstring found = nameOf(*info.get(), name);
    expect(found == name,
           "GetCsConfiguredTransformationInfo finds " + printable(found) + " in the place of " + printable(name));
    expect(kindOf(*info.get(), type) == type,
           "GetCsConfiguredTransformationInfo finds another kind than " + number(type));
}

void expectNotFound(const wchar_t* source, const wchar_t* target)
{
    expectFound(source, target, L"", 0);
}

void checkDrawingConfiguration()
{
    const Drawing drawing;
    expect(configuration(kInDrawing) == kNone, "GetCsTransformationConfig finds a configuration in a new drawing");
    Notices notices;
    const Recorder reactor(notices, L"A");
    const std::wstring text = itemText(L"A:1", L"A:2", L"first") + itemText(L"A:3", L"A:4", L"second");
    expect(Cs::SetCsTransformationConfig(text.c_str(), kInDrawing),
           "SetCsTransformationConfig of the drawing answers false: see QeApDocManager::lockDocument, "
           "QeDbObject::upgradeOpen, QeDbDictionary::getAt and setAt");
    expect(configuration(kInDrawing) == text,
           "GetCsTransformationConfig gives " + printable(configuration(kInDrawing)));
    expect(Cs::SetCsTransformationConfig(itemText(L"A:5", L"A:6", L"n").c_str(), kInDrawing) &&
               configuration(kInDrawing) == itemText(L"A:5", L"A:6", L"n"),
           "a second SetCsTransformationConfig does not replace the first");
    expectNotices(notices, {L"A transformation", L"A transformation"});
}

void checkFindingConfiguration()
{
    const Drawing drawing;
    need(Cs::SetCsTransformationConfig(itemText(L"Port:1", L"Port:2", L"first").c_str(), kInDrawing),
         "SetCsTransformationConfig of the drawing answers false");
    expectFound(L"Port:1", L"Port:2", L"first", kTransformation);
    expectFound(L"PORT:1", L"port:2", L"first", kTransformation);
    expectNotFound(L"Port:1", L"Port:3");
    expectNotFound(L"Port:1", L"PORT:1"); // _wcsicmp tells that they are the same
}

void checkReversedConfiguration()
{
    const PortCheck::Systems& known = systems();
    need(known.reversibleTransformation != nullptr || known.irreversibleTransformation != nullptr,
         "the hook systems names no geodetic transformation");
    const Drawing drawing;
    std::wstring text;
    if (known.reversibleTransformation != nullptr)
        text += itemText(L"Port:1", L"Port:2", known.reversibleTransformation);
    if (known.irreversibleTransformation != nullptr)
        text += itemText(L"Port:3", L"Port:4", known.irreversibleTransformation);
    if (known.reversiblePath != nullptr)
        text += itemText(L"Port:5", L"Port:6", known.reversiblePath, kPath);
    need(Cs::SetCsTransformationConfig(text.c_str(), kInDrawing),
         "SetCsTransformationConfig of the drawing answers false");
    if (known.reversibleTransformation != nullptr)
        expectFound(L"Port:2", L"Port:1", known.reversibleTransformation, kTransformation);
    expectNotFound(L"Port:4", L"Port:3");
    if (known.reversiblePath != nullptr)
        expectFound(L"Port:6", L"Port:5", known.reversiblePath, kPath);
}

void checkClearingConfiguration()
{
    const Drawing drawing;
    need(Cs::SetCsTransformationConfig(itemText(L"Port:1", L"Port:2", L"first").c_str(), kInDrawing),
         "SetCsTransformationConfig of the drawing answers false");
    expect(Cs::ClearCsTransformationConfig(kInDrawing), "ClearCsTransformationConfig of the drawing answers false");
    const std::wstring left = configuration(kInDrawing);
    expect(left.empty(), "ClearCsTransformationConfig leaves " + printable(left) + " in the drawing");
    expectNotFound(L"Port:1", L"Port:2");
}

/// The folder that the user's configuration is in, with no configuration that somebody needs.
void needFreeSettings()
{
    static_cast<void>(needSettingsFolder());
    const std::wstring present = configuration(kOfUser);
    need(present == kNone || present.empty(),
         "the folder VORLEN_USER_DICTIONARY_PATH holds somebody's configuration; name an empty folder");
}

/// Empties the settings file at the end of the scope.
struct EmptiedSettings {
    EmptiedSettings() = default;
    EmptiedSettings(const EmptiedSettings&) = delete;
    EmptiedSettings& operator=(const EmptiedSettings&) = delete;
    ~EmptiedSettings() { static_cast<void>(Cs::SetCsTransformationConfig(L"", kOfUser)); }
};

void checkUserConfiguration()
{
    needFreeSettings();
    const EmptiedSettings emptied;
    const std::wstring text =
        itemText(L"Port:1", L"Port:2", L"\u00E9\uFFFD") + itemText(L"Port:3", L"Port:4", L"second");
    expect(Cs::SetCsTransformationConfig(text.c_str(), kOfUser),
           "SetCsTransformationConfig of the user answers false: see _wfsopen and WideCharToMultiByte");
    const std::wstring found = configuration(kOfUser);
    expect(found == text, "GetCsTransformationConfig of the user gives " + printable(found));
    const Drawing drawing; // which has none of its own
    expectFound(L"port:3", L"port:4", L"second", kTransformation);
}

void checkClearingRegistry()
{
    const FreeRegistry registry;
    const DeletedValues atLast(registry);
    setValue(registry.writer, L"Item1");
    setValue(registry.writer, L"Item2");
    expect(Cs::ClearCsTransformationConfig(kOfUser), "ClearCsTransformationConfig of the user answers false: see "
                                                     "RegCreateKeyExW, RegOpenKeyExW, RegEnumValueW, RegDeleteValueW");
    expect(valueNames(registry.reader).empty(), "ClearCsTransformationConfig of the user leaves a value in the "
                                                "registry: see RegEnumValueW and RegDeleteValueW");
}

// Checks with each call of the platform failing in turn.

/// What is done while a call fails, and what is looked at afterwards.
struct Scenario {
    std::function<void(const Drawing&)> prepare;
    std::function<bool(const Drawing&)> act; // whether it succeeded
    /// Empty when all is as promised.
    std::function<std::string(const Drawing&, const Stored& before, bool succeeded)> complaint;
};

/// An exception of the library or of an allocation is a failure like others.
bool succeeds(const Scenario& scenario, const Drawing& drawing)
{
    try {
        return scenario.act(drawing);
    } catch (const Failed&) {
        return false;
    } catch (const NotTried&) {
        return false;
    } catch (const std::exception&) {
        return false;
    }
}

/// Returns whether a call was made to fail.
bool runWithFailure(const Scenario& scenario, std::size_t call)
{
    const Drawing drawing;
    scenario.prepare(drawing);
    const Stored before = readStored(drawing);
    const std::string held = PortCheck::heldNow();
    static_cast<void>(PortCheck::failCall(call));
    const bool succeeded = succeeds(scenario, drawing);
    const PortCheck::Calls calls = PortCheck::callsMade();
    static_cast<void>(PortCheck::failCall(0));
    const std::string where = calls.failed.empty() ? "without a failing call, "
                                                   : "after " + calls.failed + " (call " +
                                                         number(static_cast<long long>(call)) + ") failed, ";
    const std::string heldAfter = PortCheck::heldNow();
    expect(held == heldAfter, where + "what is held is \"" + heldAfter + "\", and was \"" + held + "\" before");
    const std::string complaint = scenario.complaint(drawing, before, succeeded);
    expect(complaint.empty(), where + complaint);
    expect(succeeded || call <= calls.made, "it fails without a failing call");
    return call <= calls.made;
}

void failEachCall(const Scenario& scenario)
{
    constexpr std::size_t kMostCalls = 100000;
    need(PortCheck::failCall(0), "the product offers no hook failCall");
    std::size_t call = 1;
    while (call < kMostCalls && runWithFailure(scenario, call))
        ++call;
    need(call > 1, "the platform has no call here that can be made to fail");
    expect(call < kMostCalls, "the hook callsMade counts no end of calls");
}

void nothing(const Drawing& /*drawing*/)
{
}

void assignProjected(const Drawing& drawing)
{
    needAssigned(drawing, loadSystem(projectedCode()).get());
}

std::string changeComplaint(const Drawing& drawing, const Stored& before)
{
    const std::string changed = difference(before, readStored(drawing));
    return changed.empty() ? "" : "the drawing is changed: " + changed;
}

std::string codeComplaint(const Drawing& drawing, const std::wstring& code)
{
    const std::wstring found = assignedCode(drawing);
    return isSameCode(found, code) ? "" : "success is answered, and GetCoordinateSystem reads " + printable(found);
}

void checkFailingAssignment()
{
    const std::wstring code = geographicCode();
    failEachCall({assignProjected,
                  [&](const Drawing& drawing) {
                      return Cs::SetCoordinateSystem(code.c_str(), drawing.database()) == Qeapp::eOk;
                  },
                  [&](const Drawing& drawing, const Stored& before, bool succeeded) -> std::string {
                      if (succeeded)
                          return codeComplaint(drawing, code);
                      // A failure after the removal leaves the drawing without a system.
                      return storesNoSystem(readStored(drawing)) ? "" : changeComplaint(drawing, before);
                  }});
}

/// Assigns the geographic code in the place of the projected one, with a reactor.
Qeapp::ErrorStatus assignWithReactor(const Drawing& drawing, bool vetoes, Notices& notices)
{
    notices.clear();
    Recorder reactor(notices, L"A");
    reactor.vetoes = vetoes;
    const std::wstring code = geographicCode();
    return Cs::SetCoordinateSystem(code.c_str(), drawing.database());
}

void checkFailingVeto()
{
    Notices notices;
    failEachCall({assignProjected,
                  [&](const Drawing& drawing) { return assignWithReactor(drawing, true, notices) == Qeapp::eVetoed; },
                  [](const Drawing& drawing, const Stored& before, bool /*succeeded*/) {
                      return changeComplaint(drawing, before);
                  }});
}

/// "A asked" and the like, without the code: it is empty where the definition's code cannot be read.
std::wstring eventOf(const std::wstring& notice)
{
    return notice.substr(0, notice.find(L' ', notice.find(L' ') + 1));
}

void checkFailingNotices()
{
    const Notices expected{L"A asked", L"A asked", L"A changed", L"A changed"};
    Notices notices;
    failEachCall({assignProjected,
                  [&](const Drawing& drawing) { return assignWithReactor(drawing, false, notices) == Qeapp::eOk; },
                  [&](const Drawing& /*drawing*/, const Stored& /*before*/, bool succeeded) -> std::string {
                      std::ranges::transform(notices, notices.begin(), eventOf);
                      const bool inOrder = notices.size() <= expected.size() &&
                                           std::equal(notices.begin(), notices.end(), expected.begin());
                      if (!inOrder)
                          return "the notices are out of order: the last one is " + printable(notices.back());
                      return !succeeded || notices.size() == expected.size() ? "" : "a notice is missing";
                  }});
}

void checkFailingReading()
{
    const std::wstring code = projectedCode();
    failEachCall({assignProjected,
                  [&](const Drawing& drawing) {
                      HostText text;
                      MadeSystem system;
                      MadeArray array;
                      const Qeapp::ErrorStatus first = Cs::GetCoordinateSystem(text.put(), drawing.database());
                      const Qeapp::ErrorStatus second =
                          Cs::GetCoordinateSystem(system.put(), nullptr, drawing.database());
                      const Qeapp::ErrorStatus third = Cs::GetCoordinateSystem(array.put(), drawing.database());
                      return first == Qeapp::eOk && second == Qeapp::eOk && third == Qeapp::eOk &&
                             isSameCode(orEmpty(text.get()), code) && isSameCode(codeOf(system.get()), code);
                  },
                  [](const Drawing& drawing, const Stored& before, bool /*succeeded*/) {
                      return changeComplaint(drawing, before);
                  }});
}

void checkFailingClearing()
{
    const auto prepare = [](const Drawing& drawing) {
        assignProjected(drawing);
        needOk(Cs::ApplyCoordinateSystemStorageVersion(drawing.database(), kLegacyFormat),
               "ApplyCoordinateSystemStorageVersion");
    };
    failEachCall({prepare,
                  [](const Drawing& drawing) { return Cs::ClearCoordinateSystem(drawing.database()) == Qeapp::eOk; },
                  [](const Drawing& drawing, const Stored& before, bool succeeded) -> std::string {
                      if (!succeeded)
                          return changeComplaint(drawing, before);
                      return storesNoSystem(readStored(drawing)) ? "" : "success is answered, and a form is left";
                  }});
}

void checkFailingSave()
{
    const std::wstring code = userDefinedCode();
    for (const bool back : {false, true}) {
        const auto prepare = [&](const Drawing& drawing) {
            needAssigned(drawing, userDefinedSystem().get());
            need(!back || PortCheck::prepareForSave(drawing.database(), kLegacyFormat), "prepareForSave answers false");
        };
        failEachCall({prepare,
                      [&](const Drawing& drawing) {
                          return PortCheck::prepareForSave(drawing.database(), back ? kNewestFormat : kLegacyFormat);
                      },
                      [&](const Drawing& drawing, const Stored& before, bool succeeded) -> std::string {
                          if (!succeeded)
                              return changeComplaint(drawing, before);
                          // A stored form that cannot be read counts as absent.
                          return storesNoSystem(readStored(drawing)) ? "" : codeComplaint(drawing, code);
                      }});
    }
}

void checkFailingConfiguration()
{
    const std::wstring former = itemText(L"Port:1", L"Port:2", L"former");
    const std::wstring text = itemText(L"Port:3", L"Port:4", L"new");
    for (const bool clear : {false, true}) {
        failEachCall({[&](const Drawing& /*drawing*/) {
                          need(Cs::SetCsTransformationConfig(former.c_str(), kInDrawing),
                               "SetCsTransformationConfig of the drawing answers false");
                      },
                      [&](const Drawing& /*drawing*/) {
                          return clear ? Cs::ClearCsTransformationConfig(kInDrawing)
                                       : Cs::SetCsTransformationConfig(text.c_str(), kInDrawing);
                      },
                      [&](const Drawing& drawing, const Stored& before, bool succeeded) -> std::string {
                          if (!succeeded)
                              return changeComplaint(drawing, before);
                          const std::wstring found = configuration(kInDrawing);
                          return found == (clear ? L"" : text)
                                     ? ""
                                     : "true is answered, and the configuration is " + printable(found);
                      }});
    }
}

void checkFailingSearch()
{
    failEachCall({[](const Drawing& /*drawing*/) {
                      need(Cs::SetCsTransformationConfig(itemText(L"Port:1", L"Port:2", L"first").c_str(), kInDrawing),
                           "SetCsTransformationConfig of the drawing answers false");
                  },
                  [](const Drawing& /*drawing*/) {
                      expectFound(L"Port:1", L"Port:2", L"first", kTransformation);
                      return true;
                  },
                  [](const Drawing& drawing, const Stored& before, bool /*succeeded*/) {
                      return changeComplaint(drawing, before);
                  }});
}

void checkFailingUserConfiguration()
{
    needFreeSettings();
    const EmptiedSettings emptied;
    const std::wstring text = itemText(L"Port:1", L"Port:2", L"first");
    failEachCall({nothing,
                  [&](const Drawing& /*drawing*/) {
                      return Cs::SetCsTransformationConfig(text.c_str(), kOfUser) && configuration(kOfUser) == text;
                  },
                  [](const Drawing& drawing, const Stored& before, bool /*succeeded*/) {
                      return changeComplaint(drawing, before);
                  }});
}

void checkFailingRegistry()
{
    const FreeRegistry registry;
    const DeletedValues atLast(registry);
    // A name that cannot be read counts as an empty one, so that true may be answered with a value left.
    failEachCall({[&](const Drawing& /*drawing*/) { setValue(registry.writer, L"Item1"); },
                  [](const Drawing& /*drawing*/) { return Cs::ClearCsTransformationConfig(kOfUser); },
                  [](const Drawing& drawing, const Stored& before, bool /*succeeded*/) {
                      return changeComplaint(drawing, before);
                  }});
}

/// Returns whether a call was made to fail and the module can be unloaded all the same.
bool loadWithFailure(std::size_t call)
{
    static_cast<void>(PortCheck::failCall(call));
    static_cast<void>(PortCheck::loadModule());
    const PortCheck::Calls calls = PortCheck::callsMade();
    static_cast<void>(PortCheck::failCall(0));
    expect(PortCheck::loadModule(), "the module cannot be loaded again after " + calls.failed + " failed");
    // A module that could not unlock itself stays loaded.
    return call <= calls.made && PortCheck::unloadModule();
}

void checkFailingLoad()
{
    const LoadedAgain atLast;
    need(loadModule(), "the product offers no hook loadModule");
    need(PortCheck::failCall(0), "the product offers no hook failCall");
    need(PortCheck::unloadModule(), "the product offers no hook unloadModule");
    std::size_t call = 1;
    while (loadWithFailure(call))
        ++call;
    expect(loadModule(), "the module cannot be loaded again");
}

/// Returns whether a call was made to fail while the module was unloaded.
bool unloadWithFailure(std::size_t call)
{
    static_cast<void>(PortCheck::failCall(call));
    static_cast<void>(PortCheck::unloadModule());
    const PortCheck::Calls calls = PortCheck::callsMade();
    static_cast<void>(PortCheck::failCall(0));
    expect(PortCheck::loadModule(), "the module cannot be loaded again after " + calls.failed + " failed");
    return call <= calls.made;
}

void checkFailingUnload()
{
    const LoadedAgain atLast;
    need(loadModule(), "the product offers no hook loadModule");
    need(PortCheck::failCall(0), "the product offers no hook failCall");
    need(PortCheck::unloadModule(), "the product offers no hook unloadModule");
    need(loadModule(), "the product offers no hook loadModule");
    std::size_t call = 1;
    while (unloadWithFailure(call))
        ++call;
    need(call > 1, "the platform has no call here that can be made to fail");
}

void cannotBeSeen()
{
    throw NotTried{"no program can see it from outside; look at the product's code"};
}

void noDrawingFiles()
{
    throw NotTried{"port_check writes no drawing files; save a drawing with a coordinate system and open it again"};
}

// The tables of checks.

struct Check {
    const char* subject;
    const char* promise;  // its identifier in docs/porting.md
    const char* sentence; // the promise
    void (*run)();
};

// Calls of the host.
constexpr Check kHostChecks[] = {
    {"the working drawing", "H7",
     "The working database is the drawing that commands act on, and the current document is its document.",
     checkWorkingDatabase},
    {"locking the document", "H31",
     "The current document can be locked for writing, until the matching `unlockDocument`.", checkDocumentLock},
    {"opening", "H9",
     "A call that opens an object gives it open for the module to close, or fails and gives null; two opens of one "
     "object may give one pointer or two, and the module closes each open.",
     checkOpening},
    {"closing", "H9",
     "A call that opens an object gives it open for the module to close, or fails and gives null; two opens of one "
     "object may give one pointer or two, and the module closes each open.",
     checkClosing},
    {"reading and writing", "H10",
     "An object may be open for reading several times at once, and for writing only alone.", checkOpenModes},
    {"from reading to writing", "H11", "`upgradeOpen` succeeds while nobody else has the object open.", checkUpgrading},
    {"new objects", "H12", "A new object has a null `objectId`, is in no drawing, and may be deleted.",
     checkNewObjects},
    {"looking a key up", "H15",
     "`QeDbDictionary::getAt` gives the id of what was added under the same key, and fails with `eKeyNotFound` for a "
     "key that is not there.",
     checkMissingKey},
    {"adding to a dictionary", "H17",
     "An object that was added is the drawing's, has an id, and is open for writing until the module closes it; an "
     "object that could not be added is still the module's and its id is null.",
     checkAdding},
    {"adding under a key that is there", "H16",
     "`QeDbDictionary::setAt` replaces what was under the key, and may erase it.", checkReplacing},
    {"opening as a class", "H13",
     "`qedbOpenObject` fails with `eNotThatKindOfClass` for an object of another class, and with `eObjectErased` for "
     "an erased object.",
     checkOpeningAsClass},
    {"ids", "H14", "An object's id stays valid as long as its drawing is open.", checkIds},
    {"removing a key", "H18",
     "`QeDbDictionary::remove` takes the entry out and may erase its object, and fails with `eKeyNotFound` for a key "
     "that is not there.",
     checkRemoving},
    {"iterating", "H19",
     "A dictionary's iterator stands at the first entry when it is made, and works after the dictionary is closed.",
     checkIterating},
    {"chains of xrecords", "H20",
     "`QeDbXrecord::rbChain` gives a copy of the chain that `setFromRbChain` was given: the same group codes and "
     "values, in the same order.",
     checkXrecord},
    {"bytes of xrecords", "H35", "Memory of `qeapp_malloc` that is put into a resbuf is released with it.",
     checkBytesOfXrecord},
    {"the first resbuf of an xrecord", "H21",
     "`QeDbXrecordIterator` stands at the first resbuf of the record and gives its group code.", checkXrecordIterator},
    {"long texts", "H24", "A text in an xrecord may have any length.", checkLongText},
    {"registered applications", "H25", "An application is registered once `QeDbRegAppTable::add` has added its record.",
     checkRegisteringApplication},
    {"reading extended data", "H22",
     "`QeDbObject::xData` gives a copy of the application's extended data, with the application's name first, and null "
     "when there is none.",
     checkReadingExtendedData},
    {"writing extended data", "H23",
     "`QeDbObject::setXData` replaces the data of the application that the chain begins with, and removes them when "
     "the chain is the name alone.",
     checkWritingExtendedData},
    {"a drawing without GeoData", "H26",
     "`qedbGetGeoDataObjId` gives the id of the drawing's GeoData object; without one it fails with `eKeyNotFound` or "
     "`eNullObjectId`.",
     checkMissingGeoData},
    {"adding a GeoData object", "H27",
     "`QeDbGeoData::postToDb` adds the object to the drawing of its block, of which it is then the GeoData object.",
     checkPostingGeoData},
    {"the GeoData text", "H28",
     "`QeDbGeoData::coordinateSystem` gives the text that `setCoordinateSystem` was given, whole, up to 32,767 "
     "characters.",
     checkGeoDataText},
    {"aborting transactions", "H29",
     "`abortTransaction` undoes all that was changed, added and removed in the drawing since the transaction began, "
     "and transactions nest.",
     checkAborting},
    {"undoing changes", "H29",
     "`abortTransaction` undoes all that was changed, added and removed in the drawing since the transaction began, "
     "and transactions nest.",
     checkAbortingChanges},
    {"undoing a GeoData object and an application", "H29",
     "`abortTransaction` undoes all that was changed, added and removed in the drawing since the transaction began, "
     "and transactions nest.",
     checkAbortingAdditions},
    {"ending transactions", "H30",
     "`endTransaction` keeps the transaction's work; when it fails the transaction is still active.", checkCommitting},
    {"host strings", "H32", "`qeutNewString` gives a copy of the text.", checkHostString},
    {"host buffers", "H33", "`qeutNewBuffer` gives a buffer of zeros that is aligned as a wide text must be.",
     checkHostBuffer},
    {"releasing buffers", "H34",
     "`qeutDelBuffer` releases what `qeutNewString` and `qeutNewBuffer` gave, and sets the pointer to null.",
     checkReleasingText},
    {"new resbufs", "H36", "`qeutNewRb` gives a resbuf of the group code, with a null `rbnext` and a value of zero.",
     checkResbuf},
    {"building chains", "H37",
     "`qeutBuildList` gives a chain of the group codes up to `kListEnd`, with copies of their texts.", checkResbufList},
    {"releasing chains", "H38", "`qeutRelRb` releases the whole chain, with the texts and bytes in it.",
     checkReleasingChain},
};

// Calls of the spatial-reference library.
constexpr Check kLibraryChecks[] = {
    {"making definitions", "S1",
     "A call that makes an object gives a new one, which `Object::Destroy` destroys, or fails and gives null.",
     checkLoading},
    {"codes that are not in the catalog", "S2",
     "`CoordinateReferenceSystemDefinition::Load` makes the definition of a code of the catalog, and fails with 35 for "
     "a code that the catalog does not have.",
     checkUnknownCode},
    {"texts of definitions", "S3",
     "A text that a definition gives is the definition's, until it is changed or destroyed.", checkTexts},
    {"codes", "S4",
     "A definition that was loaded by a code, or read from what was written, has that code but for the case of its "
     "letters.",
     checkCode},
    {"kinds", "S6",
     "A geographic or projected system names its ellipsoid, and its datum when it is datum-based; the datum and the "
     "ellipsoid that are made of it have these codes, and the datum names the same ellipsoid.",
     checkKinds},
    {"datums and ellipsoids", "S6",
     "A geographic or projected system names its ellipsoid, and its datum when it is datum-based; the datum and the "
     "ellipsoid that are made of it have these codes, and the datum names the same ellipsoid.",
     checkDatumAndEllipsoid},
    {"systems with a datum", "S6",
     "A geographic or projected system names its ellipsoid, and its datum when it is datum-based; the datum and the "
     "ellipsoid that are made of it have these codes, and the datum names the same ellipsoid.",
     checkDatumBased},
    {"setting datums and ellipsoids", "S7", "`SetDatum` and `SetEllipsoid` copy what they are given.",
     checkSettingParts},
    {"arrays", "S8",
     "An array owns its definitions: `Add` takes a definition over when it succeeds, and only then; `Remove` gives it "
     "to the module.",
     checkArray},
    {"writing bytes", "S9",
     "`Write` writes a system, a datum or an ellipsoid as bytes of which the first is zero, and fails when there are "
     "more than 1,024.",
     checkWritingStream},
    {"reading bytes", "S10",
     "`Read` of what `Write` wrote gives exactly one definition of the same class, also for a user-defined one.",
     checkReadingStream},
    {"writing text", "S11",
     "`Serialize_s` writes UTF-16 little-endian text with its NUL, on every operating system, and fails when that has "
     "more than 65,536 bytes; with dependents the datum and the ellipsoid are in it.",
     checkWritingText},
    {"reading text", "S12",
     "`Deserialize_s` of what `Serialize_s` wrote, with dependents or without, gives a system of the same code, also "
     "for a user-defined one that the catalog does not have.",
     checkReadingText},
    {"classes", "S5", "`dynamic_cast` in the module tells systems, datums and ellipsoids apart.", checkClasses},
    {"well-known text", "S13",
     "`DefinitionToWkt_s` writes well-known text with its NUL and returns 0 or 41. It fails where the definition has "
     "no "
     "such text, and where the buffer is too small.",
     checkWkt},
    {"transformations", "S14",
     "A transformation or a path is loaded by its name, and says whether it may be applied in reverse.",
     checkTransformations},
    {"paths", "S14", "A transformation or a path is loaded by its name, and says whether it may be applied in reverse.",
     checkPaths},
    {"what a transformation is", "S15", "A `TransformationInfo` keeps the name and the kind that it was given.",
     checkTransformationInfo},
};

// Calls of the foundation library and of the system.
constexpr Check kSystemChecks[] = {
    {"new objects", "F1", "A new object has a count of 1.", checkFirstReference},
    {"references", "F2",
     "`AddRef` adds 1 to the count, `Release` takes 1 off, and the object calls its `Dispose` when the count becomes "
     "0.",
     checkReferences},
    {"adding items", "F3", "`FqDisposableCollection::Add` appends the item and adds a reference to it.",
     checkAddingItem},
    {"getting items", "F4",
     "`FqDisposableCollection::GetItem` adds a reference to the item that it gives, and gives null out of range.",
     checkGettingItem},
    {"releasing items", "F5", "`FqDisposableCollection::Clear` and the collection's end release each item once.",
     checkReleasingItems},
    {"owning pointers", "F6", "`Ptr` takes over a reference from a raw pointer, and releases it at its end.", checkPtr},
    {"class identifiers", "W1",
     "`CLSIDFromString` reads \"{…}\" with 32 hexadecimal digits and four hyphens, and `StringFromCLSID` writes the "
     "same text in upper case.",
     checkClassIdentifiers},
    {"comparing texts", "W2",
     "`_wcsicmp` and `_wcsnicmp` give 0 for texts that differ in the case of letters only, and another number for "
     "others.",
     checkComparing},
    {"environment variables", "W3",
     "`_wgetenv_s` gives 0 and the variable's value; for a variable that is not set, or does not fit, it gives another "
     "number, an empty text or both.",
     checkEnvironment},
    {"the user's folder", "W4",
     "`SHGetSpecialFolderPathW` gives the path of the user's local application data, at most 259 characters, or "
     "`FALSE`.",
     checkSpecialFolder},
    {"text files", "W5",
     "`_wfsopen` opens a path with backslashes; with `wt` it makes or empties the file and lines end with CR LF in it, "
     "and with `rt` they are read with LF.",
     checkTextFiles},
    {"UTF-8", "W6",
     "The conversions between UTF-8 and wide text return the length needed when the output has 0 characters, and 0 "
     "when "
     "the output is too short or the call fails otherwise. Bytes that are not UTF-8 become U+FFFD. A length of -1 "
     "means "
     "the text with its NUL.",
     checkCodePage},
    {"registry keys", "W7",
     "`RegCreateKeyExW` opens a key, and makes it and those above it when they are missing; `RegOpenKeyExW` opens it "
     "afterwards.",
     checkRegistryKeys},
    {"deleting registry values", "W10", "`RegDeleteValueW` deletes the value of that name.", checkDeletingValue},
    {"names of registry values", "W8", "`RegEnumValueW` gives each value's name once, with its NUL.",
     checkNamesOfValues},
    {"the end of registry values", "W9",
     "`RegEnumValueW` gives `ERROR_NO_MORE_ITEMS` for every index without a value; the module asks until it gets that.",
     checkRegistryValues},
};

// The module in the product.
constexpr Check kModuleChecks[] = {
    {"the module's version", "H1",
     "The host loads the module's library, calls `qerxGetApiVersion`, and goes on only when it returns 0x00180000.",
     checkVersionOfLoader},
    {"loading", "H2",
     "The host then calls `qerxEntryPoint(1, handle)`, with a handle of its own for the module, when the dynamic "
     "linker is in the system registry.",
     checkLoadingModule},
    {"unloading", "H3",
     "The host may call `qerxEntryPoint(2, handle)` at any time after that, and unloads the module's library "
     "afterwards.",
     checkUnloadingModule},
    {"threads", "H4", "The host calls the module on its main thread only.", cannotBeSeen},
    {"assigning", "H28",
     "`QeDbGeoData::coordinateSystem` gives the text that `setCoordinateSystem` was given, whole, up to 32,767 "
     "characters.",
     checkAssigning},
    {"assigning an unknown code", "S2",
     "`CoordinateReferenceSystemDefinition::Load` makes the definition of a code of the catalog, and fails with 35 for "
     "a code that the catalog does not have.",
     checkUnknownAssignment},
    {"assigning to the working drawing", "H7",
     "The working database is the drawing that commands act on, and the current document is its document.",
     checkWorkingDrawing},
    {"reading the code", "H32", "`qeutNewString` gives a copy of the text.", checkReadingCode},
    {"reading the definition", "S12",
     "`Deserialize_s` of what `Serialize_s` wrote, with dependents or without, gives a system of the same code, also "
     "for a user-defined one that the catalog does not have.",
     checkReadingDefinition},
    {"reading all definitions", "S11",
     "`Serialize_s` writes UTF-16 little-endian text with its NUL, on every operating system, and fails when that has "
     "more than 65,536 bytes; with dependents the datum and the ellipsoid are in it.",
     checkReadingArray},
    {"serialized blocks", "S10",
     "`Read` of what `Write` wrote gives exactly one definition of the same class, also for a user-defined one.",
     checkBlocks},
    {"a veto", "S4",
     "A definition that was loaded by a code, or read from what was written, has that code but for the case of its "
     "letters.",
     checkVeto},
    {"notices in order", "S4",
     "A definition that was loaded by a code, or read from what was written, has that code but for the case of its "
     "letters.",
     checkNotices},
    {"clearing", "H30", "`endTransaction` keeps the transaction's work; when it fails the transaction is still active.",
     checkClearing},
    {"clearing the forms of version 29", "H23",
     "`QeDbObject::setXData` replaces the data of the application that the chain begins with, and removes them when "
     "the chain is the name alone.",
     checkClearingLegacyForms},
    {"versions 29 and 33, systems of the catalog", "H5",
     "When the host saves a drawing in another drawing format, it calls every decomposition reactor before it writes, "
     "with the drawing and the number of the format.",
     checkFormatsOfCatalogSystems},
    {"versions 29 and 33, a user-defined system", "H5",
     "When the host saves a drawing in another drawing format, it calls every decomposition reactor before it writes, "
     "with the drawing and the number of the format.",
     checkFormatsOfUserDefinedSystem},
    {"a save that fails", "H6",
     "When a decomposition reactor answers or records a failure, the host writes nothing and undoes all that the "
     "reactors changed in the drawing.",
     checkFailedSave},
    {"removed decomposition reactors", "H39",
     "After `QeDbDecompositionManager::removeReactor` the host calls the reactor no more.", checkRemovedReactor},
    {"drawing files", "H40",
     "What is stored in a drawing is in it again after the drawing was saved and opened: dictionaries, xrecords, "
     "extended data, registered applications and the GeoData object.",
     noDrawingFiles},
    {"the drawing's configuration", "H31",
     "The current document can be locked for writing, until the matching `unlockDocument`.", checkDrawingConfiguration},
    {"finding a transformation", "W2",
     "`_wcsicmp` and `_wcsnicmp` give 0 for texts that differ in the case of letters only, and another number for "
     "others.",
     checkFindingConfiguration},
    {"finding a transformation in reverse", "S14",
     "A transformation or a path is loaded by its name, and says whether it may be applied in reverse.",
     checkReversedConfiguration},
    {"clearing the drawing's configuration", "H16",
     "`QeDbDictionary::setAt` replaces what was under the key, and may erase it.", checkClearingConfiguration},
    {"the user's configuration", "W5",
     "`_wfsopen` opens a path with backslashes; with `wt` it makes or empties the file and lines end with CR LF in it, "
     "and with `rt` they are read with LF.",
     checkUserConfiguration},
    {"clearing the user's configuration", "W10", "`RegDeleteValueW` deletes the value of that name.",
     checkClearingRegistry},
};

// Each call failing in turn.
constexpr Check kFailingCallChecks[] = {
    {"assigning, each call failing", "H8", "A host call that fails has changed nothing.", checkFailingAssignment},
    {"a veto, each call failing", "H8", "A host call that fails has changed nothing.", checkFailingVeto},
    {"notices, each call failing", "H8", "A host call that fails has changed nothing.", checkFailingNotices},
    {"reading, each call failing", "H8", "A host call that fails has changed nothing.", checkFailingReading},
    {"clearing, each call failing", "H8", "A host call that fails has changed nothing.", checkFailingClearing},
    {"saving, each call failing", "H8", "A host call that fails has changed nothing.", checkFailingSave},
    {"the drawing's configuration, each call failing", "H8", "A host call that fails has changed nothing.",
     checkFailingConfiguration},
    {"finding a transformation, each call failing", "H8", "A host call that fails has changed nothing.",
     checkFailingSearch},
    {"the user's configuration, each call failing", "H8", "A host call that fails has changed nothing.",
     checkFailingUserConfiguration},
    {"clearing the user's configuration, each call failing", "H8", "A host call that fails has changed nothing.",
     checkFailingRegistry},
    {"unloading, each call failing", "H8", "A host call that fails has changed nothing.", checkFailingUnload},
    {"loading, each call failing", "H8", "A host call that fails has changed nothing.", checkFailingLoad},
};

// Running the checks and printing what they say.

struct Verdict {
    enum class Kind { holds, fails, notTried } kind = Kind::holds;
    std::string reason;
};

Verdict judge(const Check& check)
{
    try {
        check.run();
        return {};
    } catch (const Failed& failed) {
        return {Verdict::Kind::fails, failed.what};
    } catch (const NotTried& notTried) {
        return {Verdict::Kind::notTried, notTried.why};
    } catch (const std::exception& exception) {
        return {Verdict::Kind::fails, std::string("an exception leaves the check: ") + exception.what()};
    }
}

/// What a check opened or made it has given back, unless the platform counts wrongly.
Verdict judgeWithHoldings(const Check& check)
{
    const std::string before = PortCheck::heldNow();
    Verdict verdict = judge(check);
    const std::string after = PortCheck::heldNow();
    if (verdict.kind == Verdict::Kind::holds && before != after)
        return {Verdict::Kind::fails,
                "afterwards what is held is \"" + after + "\", and was \"" + before + "\" before"};
    return verdict;
}

/// Counts the verdicts.
struct Summary {
    int held = 0;
    int failed = 0;
    int notTried = 0;
};

void print(const Check& check, const Verdict& verdict, Summary& summary)
{
    const char* state = "holds    ";
    if (verdict.kind == Verdict::Kind::fails)
        state = "fails    ";
    if (verdict.kind == Verdict::Kind::notTried)
        state = "not tried";
    ++(verdict.kind == Verdict::Kind::holds   ? summary.held
       : verdict.kind == Verdict::Kind::fails ? summary.failed
                                              : summary.notTried);
    const std::string reason = verdict.reason.empty() ? "" : verdict.reason + " | ";
    std::printf("%s  %s: %s%s  %s\n", state, check.subject, reason.c_str(), check.promise, check.sentence);
    static_cast<void>(std::fflush(stdout)); // so that a crash shows which check it is in
}

void runAll(const char* title, std::span<const Check> checks, Summary& summary)
{
    std::printf("%s\n", title);
    for (const Check& check : checks)
        print(check, judgeWithHoldings(check), summary);
    std::printf("\n");
}

/// Empty when the checks can begin.
std::string obstacle()
{
    try {
        static_cast<void>(loadModule());
        const Drawing drawing;
        return "";
    } catch (const NotTried& notTried) {
        return notTried.why;
    } catch (const std::exception& exception) {
        return std::string("a hook throws: ") + exception.what();
    }
}

} // namespace

int main()
{
    const std::string reason = obstacle();
    if (!reason.empty()) {
        std::fprintf(stderr, "port_check cannot begin: %s\n", reason.c_str());
        return 2;
    }
    Summary summary;
    runAll("Calls of the host", kHostChecks, summary);
    runAll("Calls of the spatial-reference library", kLibraryChecks, summary);
    runAll("Calls of the foundation library and of the system", kSystemChecks, summary);
    runAll("The module in the product", kModuleChecks, summary);
    runAll("Each call failing in turn", kFailingCallChecks, summary);
    std::printf("%d hold, %d fail, %d not tried\n", summary.held, summary.failed, summary.notTried);
    return summary.failed == 0 ? 0 : 1;
}
