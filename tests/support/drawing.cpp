#include "support/drawing.h"

#include <stdexcept>

#include "embedded/host/drawing_file/drawing_dump.h"
#include "embedded/host/drawing_file/drawing_file.h"

namespace Tests {
namespace {

using Orvel::HostObject;
using Orvel::NamedObjects;

/// Throws when a test cannot be set up.
void require(Qeapp::ErrorStatus result)
{
    if (result != Qeapp::eOk)
        throw std::runtime_error("setting up a drawing: host result " + std::to_string(static_cast<int>(result)));
}

NamedObjects namedObjects(QeDbDatabase* database, QeDb::OpenMode mode)
{
    NamedObjects dictionary;
    require(dictionary.openIn(database, mode));
    return dictionary;
}

HostObject<QeDbRegAppTable> regAppTable(QeDbDatabase* database, QeDb::OpenMode mode)
{
    HostObject<QeDbRegAppTable> table;
    require(table.openWith([&](QeDbRegAppTable*& object) { return database->getRegAppTable(object, mode); }));
    return table;
}

QeDbObjectId modelSpace(QeDbDatabase* database)
{
    QeDbObjectId id;
    require(qedbSymUtil()->blockModelSpaceId(database, id));
    return id;
}

void putAt(QeDbDatabase* database, const wchar_t* key, QeDbObject* object)
{
    const NamedObjects dictionary = namedObjects(database, QeDb::kForWrite);
    QeDbObjectId id;
    require(dictionary->setAt(key, object, id));
}

template <class T>
T valueOrThrow(Embedded::Expected<T> result)
{
    if (!result)
        throw std::runtime_error("a test's drawing: " + result.error().text());
    return std::move(*result);
}

} // namespace

std::string drawingContents(const QeDbDatabase& database)
{
    return valueOrThrow(Embedded::dumpDrawing(database));
}

std::ptrdiff_t countOccurrences(std::string_view text, std::string_view part)
{
    std::ptrdiff_t number = 0;
    for (std::size_t at = text.find(part); at != std::string_view::npos; at = text.find(part, at + part.size()))
        ++number;
    return number;
}

std::string saveToBytes(QeDbDatabase& database)
{
    return valueOrThrow(Embedded::saveDrawingToBytes(database, database.drawingVersion()));
}

std::unique_ptr<QeDbDatabase> loadFromBytes(const std::string& bytes)
{
    return valueOrThrow(Embedded::loadDrawingFromBytes(bytes));
}

Drawing::Drawing(QeDb::QeDbDwgVersion version) : database_(std::make_unique<QeDbDatabase>(version))
{
}

Drawing& Drawing::withRegisteredApplication(const wchar_t* name)
{
    if (hasRegisteredApplication(name))
        return *this;
    const HostObject<QeDbRegAppTable> table = regAppTable(database(), QeDb::kForWrite);
    const HostObject<QeDbRegAppTableRecord> record(new QeDbRegAppTableRecord);
    require(record->setName(name));
    QeDbObjectId id;
    require(table->add(id, record.get()));
    return *this;
}

Drawing& Drawing::withLegacyCode(const std::wstring& code)
{
    return withLegacyChain({{1001, L"KTN_PROJECTION"}, {1000, code}});
}

Drawing& Drawing::withLegacyChain(const Items& items)
{
    withRegisteredApplication();
    const NamedObjects dictionary = namedObjects(database(), QeDb::kForWrite);
    require(dictionary->setXData(makeChain(items).get()));
    return *this;
}

Drawing& Drawing::withXrecord(const Items& items, const wchar_t* key)
{
    const HostObject<QeDbXrecord> xrecord(new QeDbXrecord);
    require(xrecord->setFromRbChain(makeChain(items).get(), database()));
    putAt(database(), key, xrecord.get());
    return *this;
}

Drawing& Drawing::withDictionary(const wchar_t* key)
{
    const HostObject<QeDbDictionary> dictionary(new QeDbDictionary);
    putAt(database(), key, dictionary.get());
    return *this;
}

Drawing& Drawing::withGeoData(const std::wstring& text)
{
    const HostObject<QeDbGeoData> geoData(new QeDbGeoData);
    require(geoData->setBlockTableRecordId(modelSpace(database())));
    require(geoData->setCoordinateSystem(text.c_str()));
    QeDbObjectId id;
    require(geoData->postToDb(id));
    return *this;
}

bool Drawing::hasRegisteredApplication(const wchar_t* name) const
{
    return regAppTable(database(), QeDb::kForRead)->has(name);
}

std::optional<Items> Drawing::legacyChain() const
{
    const NamedObjects dictionary = namedObjects(database(), QeDb::kForRead);
    const Orvel::ResbufChain chain(dictionary->xData(L"KTN_PROJECTION"));
    return chain ? std::optional(readChain(chain.get())) : std::nullopt;
}

std::optional<Items> Drawing::xrecord(const wchar_t* key) const
{
    const NamedObjects dictionary = namedObjects(database(), QeDb::kForRead);
    QeDbObjectId id;
    if (dictionary->getAt(key, id) != Qeapp::eOk)
        return std::nullopt;
    HostObject<QeDbXrecord> xrecord;
    require(xrecord.open(id, QeDb::kForRead));
    Orvel::ResbufChain chain;
    require(xrecord->rbChain(chain.put(), database()));
    return readChain(chain.get());
}

std::optional<std::wstring> Drawing::geoDataText() const
{
    QeDbObjectId id;
    if (qedbGetGeoDataObjId(database(), id) != Qeapp::eOk)
        return std::nullopt;
    HostObject<QeDbGeoData> geoData;
    require(geoData.open(id, QeDb::kForRead));
    return geoData->coordinateSystem();
}

bool Drawing::geoDataIsInModelSpace() const
{
    QeDbObjectId id;
    require(qedbGetGeoDataObjId(database(), id));
    HostObject<QeDbGeoData> geoData;
    require(geoData.open(id, QeDb::kForRead));
    return geoData->ownerId() == modelSpace(database());
}

} // namespace Tests
