// A shared library that answers an API version and has no entry point.
#include "platform/host/runtime.h"

extern "C" PLATFORM_EXPORT int qerxGetApiVersion();

int qerxGetApiVersion()
{
    return kQeRxApiVersion;
}
