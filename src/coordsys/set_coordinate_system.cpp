#include <string>

#include "coordsys/coordinate_system_reactors.h"
#include "coordsys/orvel_coordinate_system.h"
#include "coordsys/scoped_report.h"
#include "storage/database_argument.h"
#include "storage/definition_code.h"
#include "storage/geodata.h"
#include "storage/library_holder.h"
#include "storage/stored_coordinate_system.h"

using namespace Orvel;

namespace Zentara::Gis::Orvel::CoordinateSystem {

namespace {

/// The name that the reactors receive. It is a copy, because a reactor may destroy the definition.
std::wstring noticeName(const CoordinateReferenceSystemDefinition* definition)
{
    const wchar_t* const code = definitionCode(definition);
    return code != nullptr ? code : L"";
}

Qeapp::ErrorStatus assign(const CoordinateReferenceSystemDefinition* definition, QeDbDatabase* db,
                          Status& libraryStatus)
{
    const std::wstring name = noticeName(definition);
    if (!NotifyCoordinateSystemWillChange(db, name.c_str()))
        return Qeapp::eVetoed;
    Qeapp::ErrorStatus result = ClearCoordinateSystem(db); // which notifies the reactors of the removal
    if (result != Qeapp::eOk)
        return result;
    if (definition != nullptr) {
        result = WriteGeoDataSerialized(db, definition, libraryStatus);
        if (result != Qeapp::eOk)
            return result;
    }
    NotifyCoordinateSystemChanged(db, name.c_str());
    return Qeapp::eOk;
}

} // namespace

Qeapp::ErrorStatus ClearCoordinateSystem(QeDbDatabase* db)
{
    QeDbDatabase* const database = resolveDatabase(db);
    if (database == nullptr)
        return Qeapp::eNoDatabase;
    if (!NotifyCoordinateSystemWillChange(database, nullptr))
        return Qeapp::eVetoed;
    const Qeapp::ErrorStatus result = ClearStoredCoordinateSystem(database);
    if (result != Qeapp::eOk)
        return result;
    NotifyCoordinateSystemChanged(database, nullptr);
    return Qeapp::eOk;
}

Qeapp::ErrorStatus SetCoordinateSystem(const CoordinateReferenceSystemDefinition* definition, QeDbDatabase* db,
                                       Status* status)
{
    QeDbDatabase* const database = resolveDatabase(db);
    if (database == nullptr)
        return Qeapp::eNoDatabase;
    Status libraryStatus = Library::statusOk;
    Qeapp::ErrorStatus result = Qeapp::eOk;
    const ScopedStatusReport report(status, &libraryStatus, &result);
    result = assign(definition, database, libraryStatus);
    return result;
}

Qeapp::ErrorStatus SetCoordinateSystem(const wchar_t* code, QeDbDatabase* db, Status* status)
{
    QeDbDatabase* const database = resolveDatabase(db);
    if (database == nullptr)
        return Qeapp::eNoDatabase;
    // The report depends on the catalog only: once the code is loaded, the caller's status becomes 0, whatever the
    // result of the assignment is.
    const Status libraryStatus = Library::statusOk;
    Qeapp::ErrorStatus catalogResult = Qeapp::eOk;
    const ScopedStatusReport report(status, &libraryStatus, &catalogResult);
    LibraryObject<CoordinateReferenceSystemDefinition> definition;
    if (!isBlank(code)) {
        const Status loadStatus = CoordinateReferenceSystemDefinition::Load(code, definition.put());
        catalogResult = libraryResult(loadStatus, definition);
    }
    if (catalogResult != Qeapp::eOk)
        return catalogResult;
    return SetCoordinateSystem(definition.get(), database, status);
}

} // namespace Zentara::Gis::Orvel::CoordinateSystem
