#include "frame/entry_point.h"

#include "frame/application.h"
#include "platform/host.h"
#include "storage/ignore_result.h"

namespace {

constexpr int kApiVersion = 0x00180000;

/// The caller does not test for null: a host loads modules through its dynamic linker.
QeRxDynamicLinker* dynamicLinker()
{
    QeRxObject* const service = qerxSysRegistry()->at(kQeRxDynamicLinkerKey);
    const bool isLinker = service != nullptr && service->isKindOf(QeRxDynamicLinker::desc());
    return isLinker ? static_cast<QeRxDynamicLinker*>(service) : nullptr;
}

void initialise(void* appHandle)
{
    Orvel::ignoreResult([=] { return qerxRegisterAppMDIAware(appHandle); });
    Orvel::ignoreResult([=] { return dynamicLinker()->unlockApplication(appHandle); });
    static_cast<void>(
        Orvel::moduleApplication().load()); // a host without decomposition can use the module all the same
}

} // namespace

int qerxGetApiVersion()
{
    return kApiVersion;
}

int qerxEntryPoint(int message, void* appHandle)
{
    if (message == QeRx::kInitAppMsg)
        initialise(appHandle);
    else if (message == QeRx::kUnloadAppMsg)
        static_cast<void>(Orvel::moduleApplication().unload()); // the host unmaps the module whatever the result
    return QeRx::kRetOK;
}
