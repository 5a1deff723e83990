// Win32 calls with no system behind them, enough to link the module.
#include "platform/windows.h"

BOOL DisableThreadLibraryCalls(HMODULE)
{
    return TRUE;
}

int CLSIDFromString(const wchar_t*, CLSID*)
{
    return -1;
}

int StringFromCLSID(const CLSID&, wchar_t** text)
{
    *text = nullptr;
    return -1;
}

void CoTaskMemFree(void*)
{
}

int _wcsicmp(const wchar_t*, const wchar_t*)
{
    return 1;
}
