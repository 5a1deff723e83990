#include "coordsys/orvel_coordinate_system.h"
#include "coordsys/scoped_report.h"
#include "storage/database_argument.h"
#include "storage/definition_code.h"
#include "storage/definition_xrecord.h"
#include "storage/geodata.h"
#include "storage/legacy_projection.h"
#include "storage/library_holder.h"
#include "storage/stored_coordinate_system.h"

using namespace Orvel;

namespace Zentara::Gis::Orvel::CoordinateSystem {

namespace {

using Definition = CoordinateReferenceSystemDefinition;
using CoordinateSystemWriter = Qeapp::ErrorStatus (*)(QeDbDatabase*, const Definition*, Status&);

Qeapp::ErrorStatus WriteCoordinateSystemCurrentForm(QeDbDatabase* db, const Definition* definition,
                                                    Status& libraryStatus)
{
    if (definition == nullptr)
        return Qeapp::eInvalidInput;
    return WriteGeoDataSerialized(db, definition, libraryStatus);
}

Qeapp::ErrorStatus WriteCoordinateSystemLegacyForm(QeDbDatabase* db, const Definition* definition,
                                                   Status& libraryStatus)
{
    if (definition == nullptr)
        return Qeapp::eInvalidInput;
    libraryStatus = Library::statusFailed;
    const wchar_t* const code = definitionCode(definition);
    if (!isLegacyProjectionCode(code))
        return Qeapp::eInvalidInput;
    Qeapp::ErrorStatus result = WriteLegacyProjectionCode(db, code);
    if (result != Qeapp::eOk)
        return result;
    // The catalog's definition has priority over the drawing's own.
    LibraryObject<Definition> inCatalog;
    const Status loadStatus = Definition::Load(code, inCatalog.put());
    const bool known = libraryResult(loadStatus, inCatalog) == Qeapp::eOk;
    const Definition* const chosen = known ? inCatalog.get() : definition;
    result = WriteCsDefinitionXrecord(chosen, db);
    if (result != Qeapp::eOk)
        return result;
    static_cast<void>(WriteGeoDataWkt(db, chosen, libraryStatus)); // older readers do not need the WKT
    libraryStatus = Library::statusOk;
    return Qeapp::eOk;
}

CoordinateSystemWriter SelectCoordinateSystemWriter(QeDb::QeDbDwgVersion version)
{
    return version < QeDb::kGeoDataTextDwg ? WriteCoordinateSystemLegacyForm : WriteCoordinateSystemCurrentForm;
}

Qeapp::ErrorStatus rewrite(QeDbDatabase* db, CoordinateSystemWriter writer, Status& libraryStatus)
{
    LibraryObject<Definition> definition;
    bool knownToCatalog = false;
    Qeapp::ErrorStatus result = GetCoordinateSystem(definition.put(), &knownToCatalog, db, &libraryStatus);
    if (result != Qeapp::eOk)
        return result;
    result = ClearStoredCoordinateSystem(db);
    if (result != Qeapp::eOk)
        return result;
    return definition ? writer(db, definition.get(), libraryStatus) : Qeapp::eOk;
}

} // namespace

Qeapp::ErrorStatus ApplyCoordinateSystemStorageVersion(QeDbDatabase* db, QeDb::QeDbDwgVersion version, Status* status)
{
    QeDbDatabase* const database = resolveDatabase(db);
    if (database == nullptr)
        return Qeapp::eNoDatabase;
    Status libraryStatus = Library::statusOk;
    Qeapp::ErrorStatus result = Qeapp::eOk;
    const ScopedStatusReport report(status, &libraryStatus, &result);
    const CoordinateSystemWriter writer = SelectCoordinateSystemWriter(version);
    result = writer != nullptr ? rewrite(database, writer, libraryStatus) : Qeapp::eInvalidDrawingVersion;
    return result;
}

} // namespace Zentara::Gis::Orvel::CoordinateSystem
