// The Win32 calls that the module makes: the system's own on Windows, a stand-in of the same names elsewhere.
// One of the four headers of the platform that the module includes.
#pragma once

#if defined(_WIN32)

#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>
//
#include <objbase.h>
#include <share.h>
#include <shlobj.h>
#include <stdio.h>
#include <stdlib.h>
#include <wchar.h>
#undef GetClassName // a macro of the system's that would rename a class's own operation

#else

#include <cstddef>
#include <cstdint>
#include <cstdio>

#include "export.h"

using BOOL = int;
using BYTE = unsigned char;
using DWORD = std::uint32_t;
using UINT = unsigned int;
using LONG = std::int32_t;
using LSTATUS = LONG;
using HRESULT = std::int32_t;
using HWND = void*;
using HMODULE = void*;
using REGSAM = std::uint32_t;
using errno_t = int;

struct GUID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    unsigned char Data4[8];
};
using CLSID = GUID;

struct RegistryKeyHandle;
using HKEY = RegistryKeyHandle*;

#define WINAPI
inline constexpr DWORD DLL_PROCESS_ATTACH = 1;
inline constexpr int TRUE = 1;
inline constexpr int FALSE = 0;
inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000E);
inline constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057);
inline constexpr HRESULT CO_E_CLASSSTRING = static_cast<HRESULT>(0x800401F3);
inline constexpr LSTATUS ERROR_SUCCESS = 0;
inline constexpr LSTATUS ERROR_FILE_NOT_FOUND = 2;
inline constexpr LSTATUS ERROR_ACCESS_DENIED = 5;
inline constexpr LSTATUS ERROR_INVALID_HANDLE = 6;
inline constexpr LSTATUS ERROR_OUTOFMEMORY = 14;
inline constexpr LSTATUS ERROR_INVALID_PARAMETER = 87;
inline constexpr LSTATUS ERROR_BAD_PATHNAME = 161;
inline constexpr LSTATUS ERROR_MORE_DATA = 234;
inline constexpr LSTATUS ERROR_NO_MORE_ITEMS = 259;
inline constexpr LSTATUS ERROR_NOACCESS = 998;
inline constexpr LSTATUS ERROR_REGISTRY_CORRUPT = 1015;
inline constexpr LSTATUS ERROR_REGISTRY_IO_FAILED = 1016;
inline constexpr LSTATUS ERROR_KEY_DELETED = 1018;
inline constexpr UINT CP_UTF8 = 65001;
inline constexpr int CSIDL_LOCAL_APPDATA = 28;
inline constexpr DWORD REG_NONE = 0;
inline constexpr DWORD REG_SZ = 1;
inline constexpr DWORD REG_EXPAND_SZ = 2;
inline constexpr DWORD REG_BINARY = 3;
inline constexpr DWORD REG_DWORD = 4;
inline constexpr DWORD REG_MULTI_SZ = 7;
inline constexpr DWORD REG_OPTION_NON_VOLATILE = 0;
inline constexpr DWORD REG_CREATED_NEW_KEY = 1;
inline constexpr DWORD REG_OPENED_EXISTING_KEY = 2;
inline constexpr REGSAM KEY_QUERY_VALUE = 0x1;
inline constexpr REGSAM KEY_SET_VALUE = 0x2;
inline constexpr REGSAM KEY_ALL_ACCESS = 0xF003F;
inline constexpr REGSAM KEY_READ = 0x20019;
inline constexpr REGSAM KEY_WRITE = 0x20006;
inline constexpr int _SH_DENYNO = 0x40;
extern WIN32_STANDIN_API const HKEY HKEY_CURRENT_USER;

// The stand-in refuses what it does not implement with an error that Windows itself returns.
extern "C" {
/// Converts "{XXXXXXXX-XXXX-XXXX-XXXX-XXXXXXXXXXXX}" to its 16 bytes. CO_E_CLASSSTRING for any other text.
WIN32_STANDIN_API HRESULT CLSIDFromString(const wchar_t* text, CLSID* clsid);
/// Returns the text in upper case. The caller releases it with CoTaskMemFree.
WIN32_STANDIN_API HRESULT StringFromCLSID(const CLSID& clsid, wchar_t** text);
WIN32_STANDIN_API void CoTaskMemFree(void* memory);

WIN32_STANDIN_API BOOL DisableThreadLibraryCalls(HMODULE module);

/// Converts text for code page 65001 without flags; each ill-formed sequence becomes U+FFFD. Returns 0, which is
/// failure, for any other code page or flag. `length` -1 means the text up to its NUL, which is included.
/// `outputLength` 0 returns the length needed.
WIN32_STANDIN_API int MultiByteToWideChar(UINT codePage, DWORD flags, const char* text, int length, wchar_t* output,
                                          int outputLength);
WIN32_STANDIN_API int WideCharToMultiByte(UINT codePage, DWORD flags, const wchar_t* text, int length, char* output,
                                          int outputLength, const char* defaultCharacter, BOOL* usedDefault);

/// The registry of the current user, in a file (embedded/windows/registry_file.h). The data of REG_SZ and REG_EXPAND_SZ
/// are wide characters, and lengths count the bytes of those; data of all other types are bytes.
WIN32_STANDIN_API LSTATUS RegCreateKeyExW(HKEY key, const wchar_t* subKey, DWORD reserved, wchar_t* className,
                                          DWORD options, REGSAM access, void* security, HKEY* result,
                                          DWORD* disposition);
WIN32_STANDIN_API LSTATUS RegOpenKeyExW(HKEY key, const wchar_t* subKey, DWORD options, REGSAM access, HKEY* result);
WIN32_STANDIN_API LSTATUS RegCloseKey(HKEY key);
WIN32_STANDIN_API LSTATUS RegSetValueExW(HKEY key, const wchar_t* name, DWORD reserved, DWORD type, const BYTE* data,
                                         DWORD lengthInBytes);
WIN32_STANDIN_API LSTATUS RegQueryValueExW(HKEY key, const wchar_t* name, DWORD* reserved, DWORD* type, BYTE* data,
                                           DWORD* lengthInBytes);
WIN32_STANDIN_API LSTATUS RegEnumValueW(HKEY key, DWORD index, wchar_t* name, DWORD* nameLength, DWORD* reserved,
                                        DWORD* type, BYTE* data, DWORD* lengthInBytes);
WIN32_STANDIN_API LSTATUS RegDeleteValueW(HKEY key, const wchar_t* name);

/// Supports only CSIDL_LOCAL_APPDATA: copies the user's data folder into `path`, which has room for 260 characters.
WIN32_STANDIN_API BOOL SHGetSpecialFolderPathW(HWND owner, wchar_t* path, int folder, BOOL create);

WIN32_STANDIN_API int _wcsicmp(const wchar_t* left, const wchar_t* right);
WIN32_STANDIN_API int _wcsnicmp(const wchar_t* left, const wchar_t* right, std::size_t count);
/// Returns 0, with the value's length and its NUL in `required`, or with `required` 0 when there is no such variable.
/// Returns ERANGE when the value does not fit.
WIN32_STANDIN_API errno_t _wgetenv_s(std::size_t* required, wchar_t* buffer, std::size_t characters,
                                     const wchar_t* name);
/// Opens a file as the C runtime does, without a lock. A mode without "b" writes lines that end with CR LF.
WIN32_STANDIN_API std::FILE* _wfsopen(const wchar_t* path, const wchar_t* mode, int sharing);
}

#endif
