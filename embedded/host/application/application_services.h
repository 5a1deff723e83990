// The application's services; made at first use and never destroyed, so that no order of shutdown matters.
#pragma once

#include <string>

#include "platform/host/application.h"

namespace QeHost {

class ApplicationServices final : public QeDbHostApplicationServices {
public:
    QeDbDatabase* workingDatabase() const override { return workingDatabase_; }
    void setWorkingDatabase(QeDbDatabase* database) override { workingDatabase_ = database; }
    const wchar_t* getUserRegistryProductRootKey() const override { return registryRoot_.c_str(); }

    ApplicationServices();
    void setRegistryRoot(const std::wstring& path) { registryRoot_ = path; }
    /// A drawing that is gone is nobody's working database.
    void clearWorkingDatabase(const QeDbDatabase& database);

private:
    QeDbDatabase* workingDatabase_ = nullptr;
    std::wstring registryRoot_ = L"Software\\Embedded Host\\1.0";
};

ApplicationServices& applicationServices();

} // namespace QeHost
