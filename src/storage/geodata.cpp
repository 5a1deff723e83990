#include "storage/geodata.h"

#include <array>
#include <cstddef>
#include <utility>

#include "storage/definition_code.h"
#include "storage/serialized_text.h"

namespace Orvel {
namespace {

constexpr std::size_t kWktCharacters = 4096;

/// The holder deletes the new object on every failure: it is in no database until it is posted.
Qeapp::ErrorStatus createGeoData(QeDbDatabase* database, HostObject<QeDbGeoData>& object)
{
    HostObject<QeDbGeoData> created(new QeDbGeoData);
    QeDbObjectId modelSpace;
    Qeapp::ErrorStatus result = qedbSymUtil()->blockModelSpaceId(database, modelSpace);
    if (result != Qeapp::eOk)
        return result;
    result = created->setBlockTableRecordId(modelSpace);
    if (result != Qeapp::eOk)
        return result;
    QeDbObjectId id;
    result = created->postToDb(id);
    if (result == Qeapp::eOk)
        object = std::move(created);
    return result;
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
    const Qeapp::ErrorStatus result = geoData.open(id, QeDb::kForRead);
    if (result == Qeapp::eOk)
        text = geoData->coordinateSystem();
    return result;
}

Qeapp::ErrorStatus OpenGeoDataForWrite(QeDbDatabase* database, HostObject<QeDbGeoData>& object, bool create)
{
    object.reset();
    QeDbObjectId id;
    if (qedbGetGeoDataObjId(database, id) != Qeapp::eOk)
        return create ? createGeoData(database, object) : Qeapp::eOk;
    HostObject<QeDbGeoData> present;
    const Qeapp::ErrorStatus result = present.open(id, QeDb::kForWrite);
    if (result == Qeapp::eOk)
        object = std::move(present);
    return result;
}

Qeapp::ErrorStatus WriteGeoDataCoordinateSystem(QeDbDatabase* database, const wchar_t* text)
{
    if (database == nullptr)
        return Qeapp::eNoDatabase;
    const bool clears = isBlank(text);
    HostObject<QeDbGeoData> geoData;
    const Qeapp::ErrorStatus result = OpenGeoDataForWrite(database, geoData, !clears);
    if (!geoData)
        return result;
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
        if (const Qeapp::ErrorStatus result = libraryResult(libraryStatus); result != Qeapp::eOk)
            return result;
    }
    return WriteGeoDataCoordinateSystem(database, text.c_str());
}

Qeapp::ErrorStatus ClearGeoDataCoordinateSystem(QeDbDatabase* database)
{
    QeDbObjectId id;
    Qeapp::ErrorStatus result = qedbGetGeoDataObjId(database, id);
    if (result == Qeapp::eKeyNotFound || result == Qeapp::eNullObjectId)
        return Qeapp::eOk;
    if (result != Qeapp::eOk || id.isNull())
        return result;
    HostObject<QeDbGeoData> geoData;
    result = geoData.open(id, QeDb::kForWrite);
    return result == Qeapp::eOk ? geoData->setCoordinateSystem(L"") : result;
}

} // namespace Orvel
