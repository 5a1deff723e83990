// A module that counts its initialisations. Macros decide what it returns to the dynamic linker.
#include "platform/host/runtime.h"

namespace {

int initialisations = 0;

int initialise(void* appHandle)
{
    ++initialisations;
    const bool known = qerxRegisterAppMDIAware(appHandle);
    auto* linker = static_cast<QeRxDynamicLinker*>(qerxSysRegistry()->at(kQeRxDynamicLinkerKey));
    return known && SAMPLE_UNLOCKS && !linker->unlockApplication(appHandle) ? QeRx::kRetError : SAMPLE_INIT_RESULT;
}

} // namespace

extern "C" {

PLATFORM_EXPORT int qerxGetApiVersion();
PLATFORM_EXPORT int qerxEntryPoint(int message, void* appHandle);
PLATFORM_EXPORT int sampleInitialisations();

int qerxGetApiVersion()
{
    return SAMPLE_API_VERSION;
}

int qerxEntryPoint(int message, void* appHandle)
{
    return message == QeRx::kInitAppMsg ? initialise(appHandle) : SAMPLE_UNLOAD_RESULT;
}

int sampleInitialisations()
{
    return initialisations;
}
}
