#include "platform/windows.h"

/// The system's per-library entry. The module keeps nothing for a thread and has no use for thread notices.
extern "C" BOOL WINAPI DllMain(HMODULE module, DWORD reason, void* /*reserved*/)
{
    if (reason == DLL_PROCESS_ATTACH)
        DisableThreadLibraryCalls(module);
    return TRUE;
}
