#include "storage/geodata.h"

#include <array>
#include <cstddef>
#include <utility>

#include "storage/definition_code.h"
#include "storage/serialized_text.h"

namespace Orvel {
namespace {

constexpr std::size_t kWktCharacters = 4096;

/// A new object is deleted, not closed, on every failure: it is in no database until it is posted.
Qeapp::ErrorStatus createGeoData(QeDbDatabase* database, HostObject<QeDbGeoData>& object)
{
    HostObject<QeDbGeoData> created(new QeDbGeoData);
    QeDbObjectId modelSpace;
    const Qeapp::ErrorStatus found = qedbSymUtil()->blockModelSpaceId(database, modelSpace);
    if (found != Qeapp::eOk)
        return found;
    const Qeapp::ErrorStatus owned = created->setBlockTableRecordId(modelSpace);
    if (owned != Qeapp::eOk)
        return owned;
    QeDbObjectId id;
    const Qeapp::ErrorStatus posted = created->postToDb(id);
    if (posted == Qeapp::eOk)
        object = std::move(created);
    return posted;
}

bool isConverted(Library::Status status)
{
    return status == Library::statusOk || status == Library::statusInexact;
}

} // namespace

Qeapp::ErrorStatus ReadGeoDataCoordinateSystem(QeDbDatabase* database, std::wstring& text)
{
    text.clear();
    QeDbObjectId id;
    if (qedbGetGeoDataObjId(database, id) != Qeapp::eOk || id.isNull())
        return Qeapp::eOk;
    HostObject<QeDbGeoData> geoData;
    const Qeapp::ErrorStatus opened = geoData.open(id, QeDb::kForRead);
    if (opened == Qeapp::eOk)
        text = geoData->coordinateSystem();
    return opened;
}

Qeapp::ErrorStatus OpenGeoDataForWrite(QeDbDatabase* database, HostObject<QeDbGeoData>& object, bool create)
{
    object.reset();
    QeDbObjectId id;
    if (qedbGetGeoDataObjId(database, id) != Qeapp::eOk)
        return create ? createGeoData(database, object) : Qeapp::eOk;
    HostObject<QeDbGeoData> present;
    const Qeapp::ErrorStatus opened = present.open(id, QeDb::kForWrite);
    if (opened == Qeapp::eOk)
        object = std::move(present);
    return opened;
}

Qeapp::ErrorStatus WriteGeoDataCoordinateSystem(QeDbDatabase* database, const wchar_t* text)
{
    if (database == nullptr)
        return Qeapp::eNoDatabase;
    const bool clears = isBlank(text);
    HostObject<QeDbGeoData> geoData;
    const Qeapp::ErrorStatus opened = OpenGeoDataForWrite(database, geoData, !clears);
    if (!geoData)
        return opened;
    return geoData->setCoordinateSystem(clears ? L"" : text);
}

Qeapp::ErrorStatus WriteGeoDataWkt(QeDbDatabase* database,
                                   const Library::CoordinateReferenceSystemDefinition* definition,
                                   Library::Status& libraryStatus)
{
    std::array<wchar_t, kWktCharacters> wkt{};
    if (definition != nullptr) {
        libraryStatus =
            Library::FormatConverter::DefinitionToWkt_s(definition, Library::wktFlavorDefault, wkt.data(), wkt.size());
        if (!isConverted(libraryStatus))
            return Qeapp::eInvalidInput;
    }
    return WriteGeoDataCoordinateSystem(database, wkt.data());
}

Qeapp::ErrorStatus WriteGeoDataSerialized(QeDbDatabase* database,
                                          const Library::CoordinateReferenceSystemDefinition* definition,
                                          Library::Status& libraryStatus)
{
    std::wstring text;
    if (definition != nullptr) {
        libraryStatus = SerializeToWideText(text, definition, true);
        if (const Qeapp::ErrorStatus serialized = libraryResult(libraryStatus); serialized != Qeapp::eOk)
            return serialized;
    }
    return WriteGeoDataCoordinateSystem(database, text.c_str());
}

Qeapp::ErrorStatus ClearGeoDataCoordinateSystem(QeDbDatabase* database)
{
    QeDbObjectId id;
    const Qeapp::ErrorStatus found = qedbGetGeoDataObjId(database, id);
    if (found == Qeapp::eKeyNotFound || found == Qeapp::eNullObjectId)
        return Qeapp::eOk;
    if (found != Qeapp::eOk || id.isNull())
        return found;
    HostObject<QeDbGeoData> geoData;
    const Qeapp::ErrorStatus opened = geoData.open(id, QeDb::kForWrite);
    return opened == Qeapp::eOk ? geoData->setCoordinateSystem(L"") : opened;
}

} // namespace Orvel
