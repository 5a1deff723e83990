#include "platform/win32.h"
#include "storage/ignore_result.h"

/// The system calls it for each library. The module has no data for each thread and needs no thread notices.
extern "C" BOOL WINAPI DllMain(HMODULE module, DWORD reason, void* /*reserved*/)
{
    if (reason == DLL_PROCESS_ATTACH)
        Orvel::ignoreResult([=] { return DisableThreadLibraryCalls(module); });
    return TRUE;
}
