#include "storage/stored_coordinate_system.h"

#include "storage/definition_xrecord.h"
#include "storage/geodata.h"
#include "storage/host_holders.h"
#include "storage/legacy_projection.h"

namespace Orvel {
namespace {

Qeapp::ErrorStatus removeAllForms(QeDbDatabase* database)
{
    if (const Qeapp::ErrorStatus result = WriteLegacyProjectionCode(database, nullptr); result != Qeapp::eOk)
        return result;
    if (const Qeapp::ErrorStatus result = StoreCsXrecordChain(database, nullptr); result != Qeapp::eOk)
        return result;
    return ClearGeoDataCoordinateSystem(database);
}

} // namespace

Qeapp::ErrorStatus ClearStoredCoordinateSystem(QeDbDatabase* database)
{
    if (database == nullptr)
        return Qeapp::eNoDatabase;
    Transaction transaction(database->transactionManager());
    if (!transaction.started())
        return Qeapp::eNoTransaction;
    const Qeapp::ErrorStatus result = removeAllForms(database);
    return result == Qeapp::eOk ? transaction.commit() : result;
}

} // namespace Orvel
