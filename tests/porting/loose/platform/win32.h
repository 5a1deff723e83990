// The Win32 calls as an SDK may have them: on Windows the system's, with its macros min and max; elsewhere calls that
// return what they like where the module does not look at it, with constants that are macros.
#pragma once

#include "windows_macros.h"

#if defined(_WIN32)

#undef NOMINMAX
#include <windows.h>
//
#include <objbase.h>
#include <share.h>
#include <shlobj.h>

#else

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = unsigned short;
using DWORD = unsigned int;
using LONG = int;
using HRESULT = int;
using HANDLE = void*;
using HMODULE = HANDLE;
using HKEY = HANDLE;

struct GUID {
    DWORD Data1;
    WORD Data2;
    WORD Data3;
    BYTE Data4[8];
};
using CLSID = GUID;
using REFCLSID = const GUID&;

#define IN
#define OUT
#define OPTIONAL
#define CONST const
#define near
#define far
#define small char
#define interface struct

#define WINAPI
#define TRUE 1
#define FALSE 0
#define DLL_PROCESS_ATTACH 1
#define S_OK ((HRESULT)0L)
#define ERROR_SUCCESS 0L
#define ERROR_NO_MORE_ITEMS 259L
#define CP_UTF8 65001
#define CSIDL_LOCAL_APPDATA 0x001c
#define REG_SZ (1ul)
#define REG_OPTION_NON_VOLATILE (0x00000000L)
#define KEY_READ (0x20019)
#define KEY_WRITE (0x20006)
#define _SH_DENYNO 0x40
#define HKEY_CURRENT_USER ((HKEY)(std::uintptr_t)(LONG)0x80000001)

void DisableThreadLibraryCalls(HMODULE module);
HRESULT CLSIDFromString(const wchar_t* text, CLSID* id);
HRESULT StringFromCLSID(REFCLSID id, wchar_t** text);
[[nodiscard]] int CoTaskMemFree(void* memory);
int _wcsicmp(const wchar_t* left, const wchar_t* right, const void* locale = nullptr);
int _wcsnicmp(const wchar_t* left, const wchar_t* right, std::size_t characters, const void* locale = nullptr);
int _wgetenv_s(std::size_t* required, wchar_t* buffer, std::size_t characters, const wchar_t* name);
template <std::size_t size>
int _wgetenv_s(std::size_t* required, wchar_t (&buffer)[size], const wchar_t* name);
FILE* _wfsopen(const wchar_t* path, const wchar_t* mode, int sharing);
BOOL SHGetSpecialFolderPathW(HANDLE window, wchar_t* path, int folder, BOOL create);
int MultiByteToWideChar(unsigned page, DWORD flags, const char* text, int length, wchar_t* output, int characters);
int WideCharToMultiByte(unsigned page, DWORD flags, const wchar_t* text, int length, char* output, int bytes,
                        const char* fallback, BOOL* usedFallback);
LONG RegCreateKeyExW(HKEY key, const wchar_t* subKey, DWORD reserved, wchar_t* className, DWORD options, DWORD access,
                     const void* security, HKEY* result, DWORD* disposition);
LONG RegOpenKeyExW(HKEY key, const wchar_t* subKey, DWORD options, DWORD access, HKEY* result);
void RegCloseKey(HKEY key);
LONG RegSetValueExW(HKEY key, const wchar_t* name, DWORD reserved, DWORD type, const BYTE* data, DWORD length);
LONG RegQueryValueExW(HKEY key, const wchar_t* name, DWORD* reserved, DWORD* type, BYTE* data, DWORD* length);
LONG RegEnumValueW(HKEY key, DWORD index, wchar_t* name, DWORD* length, DWORD* reserved, DWORD* type, BYTE* data,
                   DWORD* dataLength);
LONG RegDeleteValueW(HKEY key, const wchar_t* name);

#endif
