#include "storage/database_argument.h"

namespace Orvel {

QeDbDatabase* resolveDatabase(QeDbDatabase* database)
{
    if (database != nullptr)
        return database;
    const QeDbHostApplicationServices* const services = qedbHostApplicationServices();
    return services != nullptr ? services->workingDatabase() : nullptr;
}

} // namespace Orvel
