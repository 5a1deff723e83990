// The strictest set of Win32 calls that the module can be built against: on Windows the system's, elsewhere what
// docs/porting.md lists and nothing more. Results must not be discarded.
#pragma once

#if defined(_WIN32)

#define NOMINMAX
#define STRICT
#define WIN32_LEAN_AND_MEAN
#include <windows.h>
//
#include <objbase.h>
#include <share.h>
#include <shlobj.h>
#include <stdio.h>
#include <stdlib.h>
#include <wchar.h>

#else

#include <cstddef>
#include <cstdint>
#include <cstdio>

#pragma GCC visibility push(default)

#define WINAPI

using BOOL = int;
using BYTE = unsigned char;
using DWORD = unsigned int;
using HMODULE = void*;
struct RegistryKey;
using HKEY = RegistryKey*;

struct CLSID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    unsigned char Data4[8];
};

inline constexpr BOOL TRUE = 1;
inline constexpr BOOL FALSE = 0;
inline constexpr DWORD DLL_PROCESS_ATTACH = 1;
inline constexpr int S_OK = 0;
inline constexpr int ERROR_SUCCESS = 0;
inline constexpr int ERROR_NO_MORE_ITEMS = 259;
inline constexpr unsigned CP_UTF8 = 65001;
inline constexpr int CSIDL_LOCAL_APPDATA = 28;
inline constexpr DWORD REG_SZ = 1;
inline constexpr DWORD REG_OPTION_NON_VOLATILE = 0;
inline constexpr DWORD KEY_READ = 0x20019;
inline constexpr DWORD KEY_WRITE = 0x20006;
inline constexpr int _SH_DENYNO = 0x40;
extern const HKEY HKEY_CURRENT_USER;

extern "C" {
[[nodiscard]] BOOL DisableThreadLibraryCalls(HMODULE);
[[nodiscard]] int CLSIDFromString(const wchar_t*, CLSID*);
[[nodiscard]] int StringFromCLSID(const CLSID&, wchar_t**);
void CoTaskMemFree(void*);
[[nodiscard]] int _wcsicmp(const wchar_t*, const wchar_t*);
[[nodiscard]] int _wcsnicmp(const wchar_t*, const wchar_t*, std::size_t);
[[nodiscard]] int _wgetenv_s(std::size_t*, wchar_t*, std::size_t, const wchar_t*);
[[nodiscard]] std::FILE* _wfsopen(const wchar_t*, const wchar_t*, int);
[[nodiscard]] BOOL SHGetSpecialFolderPathW(void*, wchar_t*, int, BOOL);
[[nodiscard]] int MultiByteToWideChar(unsigned, DWORD, const char*, int, wchar_t*, int);
[[nodiscard]] int WideCharToMultiByte(unsigned, DWORD, const wchar_t*, int, char*, int, const char*, BOOL*);
[[nodiscard]] int RegCreateKeyExW(HKEY, const wchar_t*, DWORD, wchar_t*, DWORD, DWORD, void*, HKEY*, DWORD*);
[[nodiscard]] int RegOpenKeyExW(HKEY, const wchar_t*, DWORD, DWORD, HKEY*);
[[nodiscard]] int RegCloseKey(HKEY);
[[nodiscard]] int RegSetValueExW(HKEY, const wchar_t*, DWORD, DWORD, const BYTE*, DWORD);
[[nodiscard]] int RegQueryValueExW(HKEY, const wchar_t*, DWORD*, DWORD*, BYTE*, DWORD*);
[[nodiscard]] int RegEnumValueW(HKEY, DWORD, wchar_t*, DWORD*, DWORD*, DWORD*, BYTE*, DWORD*);
[[nodiscard]] int RegDeleteValueW(HKEY, const wchar_t*);
}

#pragma GCC visibility pop

#endif
