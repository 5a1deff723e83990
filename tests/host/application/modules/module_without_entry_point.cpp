// A shared library that exports an API version but no entry point.
#include "platform/host/runtime.h"

extern "C" PLATFORM_EXPORT int qerxGetApiVersion();

int qerxGetApiVersion()
{
    return kQeRxApiVersion;
}
