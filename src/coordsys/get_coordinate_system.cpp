#include <string>

#include "coordsys/orvel_coordinate_system.h"
#include "coordsys/scoped_report.h"
#include "storage/database_argument.h"
#include "storage/definition_code.h"
#include "storage/definition_xrecord.h"
#include "storage/geodata.h"
#include "storage/host_holders.h"
#include "storage/legacy_projection.h"
#include "storage/library_holder.h"
#include "storage/serialized_text.h"

using namespace Orvel;

namespace Zentara::Gis::Orvel::CoordinateSystem {

namespace {

using DefinitionHolder = LibraryObject<CoordinateReferenceSystemDefinition>;
using ArrayHolder = LibraryObject<DefinitionBaseArray>;

Qeapp::ErrorStatus readFromGeoData(DefinitionBaseArray*& definitions, QeDbDatabase* db, Status& libraryStatus)
{
    std::wstring text;
    Qeapp::ErrorStatus result = ReadGeoDataCoordinateSystem(db, text);
    if (result != Qeapp::eOk)
        return result;
    ArrayHolder array;
    libraryStatus =
        text.empty() ? DefinitionBaseArray::CreateInstance(array.put()) : DeserializeWideText(array, text.c_str());
    if (text.empty() && libraryStatus == Library::statusOutOfMemory)
        return Qeapp::eOutOfMemory;
    result = libraryResult(libraryStatus, array);
    if (result == Qeapp::eOk)
        definitions = array.release();
    return result;
}

/// Ignores an empty holder.
template <class Definition>
Qeapp::ErrorStatus add(DefinitionBaseArray& definitions, LibraryObject<Definition>& definition, Status& libraryStatus)
{
    if (!definition)
        return Qeapp::eOk;
    libraryStatus = addDefinition(definitions, definition);
    return libraryResult(libraryStatus);
}

Qeapp::ErrorStatus addStored(DefinitionBaseArray& definitions, DefinitionSet& stored, Status& libraryStatus)
{
    Qeapp::ErrorStatus result = add(definitions, stored.system, libraryStatus);
    if (result == Qeapp::eOk)
        result = add(definitions, stored.datum, libraryStatus);
    if (result == Qeapp::eOk)
        result = add(definitions, stored.ellipsoid, libraryStatus);
    return result;
}

Qeapp::ErrorStatus addFromCatalog(DefinitionBaseArray& definitions, const std::wstring& code, Status& libraryStatus)
{
    DefinitionHolder definition;
    libraryStatus = CoordinateReferenceSystemDefinition::Load(code.c_str(), definition.put());
    if (libraryResult(libraryStatus, definition) != Qeapp::eOk)
        return Qeapp::eNotApplicable;
    return add(definitions, definition, libraryStatus);
}

Qeapp::ErrorStatus readByLegacyCode(DefinitionBaseArray*& definitions, QeDbDatabase* db, const std::wstring& code,
                                    Status& libraryStatus)
{
    ArrayHolder array;
    libraryStatus = DefinitionBaseArray::CreateInstance(array.put());
    const Qeapp::ErrorStatus result = libraryResult(libraryStatus, array);
    if (result != Qeapp::eOk)
        return result;
    definitions = array.release(); // the caller owns it from here on, also when what follows fails
    DefinitionSet stored;
    if (ReadCsDefinitionXrecord(db, code.c_str(), stored))
        return addStored(*definitions, stored, libraryStatus);
    return addFromCatalog(*definitions, code, libraryStatus);
}

/// Removes the first coordinate reference system from the array and destroys the definitions before it.
DefinitionHolder removeSystem(DefinitionBaseArray& definitions)
{
    DefinitionHolder system;
    while (!system && definitions.GetCount() > 0) {
        LibraryObject<Library::DefinitionBase> item(definitions.Remove(0));
        system = takeAs<CoordinateReferenceSystemDefinition>(item);
    }
    return system;
}

Qeapp::ErrorStatus checkCatalog(const CoordinateReferenceSystemDefinition* definition, bool& known,
                                Status& libraryStatus)
{
    DefinitionHolder inCatalog;
    libraryStatus = CoordinateReferenceSystemDefinition::Load(definitionCode(definition), inCatalog.put());
    known = libraryStatus == Library::statusOk;
    if (known || libraryStatus == Library::statusNotFound)
        return Qeapp::eOk;
    if (libraryStatus == Library::statusOutOfMemory)
        return Qeapp::eOutOfMemory;
    libraryStatus = Library::statusCheckFailed;
    return Qeapp::eInvalidInput;
}

/// Leaves `code` empty where the drawing has no coordinate system.
Qeapp::ErrorStatus GetCoordinateSystemCode(HostString& code, bool& knownToCatalog, QeDbDatabase* db)
{
    DefinitionHolder definition;
    const Qeapp::ErrorStatus result = GetCoordinateSystem(definition.put(), &knownToCatalog, db, nullptr);
    if (result != Qeapp::eOk || !definition)
        return result;
    const wchar_t* const storedCode = definitionCode(definition.get());
    return isBlank(storedCode) ? Qeapp::eInvalidInput : qeutNewString(storedCode, code.put());
}

} // namespace

Qeapp::ErrorStatus GetCoordinateSystem(DefinitionBaseArray*& definitions, QeDbDatabase* db, Status* status)
{
    QeDbDatabase* const database = resolveDatabase(db);
    if (database == nullptr)
        return Qeapp::eNoDatabase;
    Status libraryStatus = Library::statusOk;
    Qeapp::ErrorStatus result = Qeapp::eOk;
    const ScopedStatusReport report(status, &libraryStatus, &result);
    const std::wstring code = ReadLegacyProjectionCode(database);
    result = code.empty() ? readFromGeoData(definitions, database, libraryStatus)
                          : readByLegacyCode(definitions, database, code, libraryStatus);
    return result;
}

Qeapp::ErrorStatus GetCoordinateSystem(CoordinateReferenceSystemDefinition*& definition, bool* knownToCatalog,
                                       QeDbDatabase* db, Status* status)
{
    QeDbDatabase* const database = resolveDatabase(db);
    if (database == nullptr)
        return Qeapp::eNoDatabase;
    definition = nullptr;
    bool known = false;
    const ScopedReport<bool> knownReport(knownToCatalog, &known);
    ArrayHolder definitions;
    Qeapp::ErrorStatus result = GetCoordinateSystem(definitions.put(), database, status);
    if (result != Qeapp::eOk || definitions->GetCount() == 0)
        return result;
    Status libraryStatus = Library::statusOk;
    const ScopedStatusReport report(status, &libraryStatus, &result);
    definition = removeSystem(*definitions.get()).release();
    if (knownToCatalog != nullptr)
        result = checkCatalog(definition, known, libraryStatus);
    return result;
}

Qeapp::ErrorStatus GetCoordinateSystem(wchar_t*& code, QeDbDatabase* db)
{
    QeDbDatabase* const database = resolveDatabase(db);
    if (database == nullptr)
        return Qeapp::eNoDatabase;
    code = nullptr;
    HostString storedCode;
    bool knownToCatalog = false;
    const Qeapp::ErrorStatus result = GetCoordinateSystemCode(storedCode, knownToCatalog, database);
    if (result != Qeapp::eOk)
        return result;
    if (storedCode && !knownToCatalog)
        return Qeapp::eInvalidInput;
    code = storedCode.release();
    return Qeapp::eOk;
}

} // namespace Zentara::Gis::Orvel::CoordinateSystem
