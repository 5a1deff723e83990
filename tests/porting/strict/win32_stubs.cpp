// Win32 calls that always fail. They are sufficient to link the module.
#include "platform/win32.h"

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

int _wcsnicmp(const wchar_t*, const wchar_t*, std::size_t)
{
    return 1;
}

int _wgetenv_s(std::size_t*, wchar_t*, std::size_t, const wchar_t*)
{
    return -1;
}

std::FILE* _wfsopen(const wchar_t*, const wchar_t*, int)
{
    return nullptr;
}

BOOL SHGetSpecialFolderPathW(void*, wchar_t*, int, BOOL)
{
    return FALSE;
}

int MultiByteToWideChar(unsigned, DWORD, const char*, int, wchar_t*, int)
{
    return 0;
}

int WideCharToMultiByte(unsigned, DWORD, const wchar_t*, int, char*, int, const char*, BOOL*)
{
    return 0;
}

const HKEY HKEY_CURRENT_USER = nullptr;

int RegCreateKeyExW(HKEY, const wchar_t*, DWORD, wchar_t*, DWORD, DWORD, void*, HKEY*, DWORD*)
{
    return -1;
}

int RegOpenKeyExW(HKEY, const wchar_t*, DWORD, DWORD, HKEY*)
{
    return -1;
}

int RegCloseKey(HKEY)
{
    return -1;
}

int RegSetValueExW(HKEY, const wchar_t*, DWORD, DWORD, const BYTE*, DWORD)
{
    return -1;
}

int RegQueryValueExW(HKEY, const wchar_t*, DWORD*, DWORD*, BYTE*, DWORD*)
{
    return -1;
}

int RegEnumValueW(HKEY, DWORD, wchar_t*, DWORD*, DWORD*, DWORD*, BYTE*, DWORD*)
{
    return ERROR_NO_MORE_ITEMS;
}

int RegDeleteValueW(HKEY, const wchar_t*)
{
    return -1;
}

int _wcsicmp(const wchar_t*, const wchar_t*)
{
    return 1;
}
