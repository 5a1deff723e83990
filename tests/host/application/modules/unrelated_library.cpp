// A shared library that exports no function of a module.
#include "platform/export.h"

extern "C" PLATFORM_EXPORT int unrelated();

int unrelated()
{
    return 0;
}
