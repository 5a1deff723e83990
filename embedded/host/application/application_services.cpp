#include "embedded/host/application/application_services.h"

#include "embedded/host/application/application.h"
#include "embedded/host/database/database.h"

QeDbHostApplicationServices::~QeDbHostApplicationServices() = default;

namespace QeHost {

ApplicationServices::ApplicationServices()
{
    databaseDestroyedHandler = [](const QeDbDatabase& database) {
        applicationServices().clearWorkingDatabase(database);
    };
}

void ApplicationServices::clearWorkingDatabase(const QeDbDatabase& database)
{
    if (workingDatabase_ == &database)
        workingDatabase_ = nullptr;
}

ApplicationServices& applicationServices()
{
    static auto* const services = new ApplicationServices;
    return *services;
}

} // namespace QeHost

QeDbHostApplicationServices* qedbHostApplicationServices()
{
    const Embedded::HostParts& parts = QeHost::hostParts();
    if (parts.otherApplicationServices != nullptr)
        return parts.otherApplicationServices;
    return parts.applicationServices ? &QeHost::applicationServices() : nullptr;
}
