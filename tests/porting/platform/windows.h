// The least of the Win32 calls that the module can be built against, with none of the project's own interfaces in it.
// It declares what docs/porting.md lists, no more; a test compares the two.
#pragma once

#include <cstdint>

#pragma GCC visibility push(default)

#define WINAPI

using BOOL = int;
using DWORD = unsigned int;
using HMODULE = void*;

struct CLSID {
    std::uint32_t Data1;
    std::uint16_t Data2;
    std::uint16_t Data3;
    unsigned char Data4[8];
};

inline constexpr BOOL TRUE = 1;
inline constexpr DWORD DLL_PROCESS_ATTACH = 1;
inline constexpr int S_OK = 0;

extern "C" {
BOOL DisableThreadLibraryCalls(HMODULE);
int CLSIDFromString(const wchar_t*, CLSID*);
int StringFromCLSID(const CLSID&, wchar_t**);
void CoTaskMemFree(void*);
int _wcsicmp(const wchar_t*, const wchar_t*);
}

#pragma GCC visibility pop
