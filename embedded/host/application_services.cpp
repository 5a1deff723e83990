#include "embedded/host/application_services.h"

#include "embedded/host/application.h"
#include "embedded/host/host_parts.h"

QeDbHostApplicationServices::~QeDbHostApplicationServices() = default;

namespace QeHost {

void ApplicationServices::forget(const QeDbDatabase& database)
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

void Embedded::setUserRegistryProductRootKey(const std::wstring& path)
{
    QeHost::applicationServices().setRegistryRoot(path);
}
