// The Win32 calls that the module makes: the system's own on Windows, and calls of the same names elsewhere. Copy this
// header; where the product runs on Windows only, its second half may go. A comment with three slashes says what the
// module expects; W1, W2 … are promises of docs/porting.md.
//
// The name is not windows.h: a product that puts the folder on its include path would find this header in the place of
// the system's.
#pragma once

#if defined(_WIN32)

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
#undef GetClassName // it would rename a member of a foundation class of that name

#else

#include <cstddef>
#include <cstdint>
#include <cstdio>

#pragma GCC visibility push(default)

/// `int`.
using BOOL = int;
/// An unsigned 8-bit integer.
using BYTE = unsigned char;
/// An unsigned 32-bit integer.
using DWORD = std::uint32_t;
/// A pointer type.
using HMODULE = void*;
struct RegistryKeyHandle;
/// A pointer type: an open registry key.
using HKEY = RegistryKeyHandle*;

/// A structure of 16 bytes.
struct CLSID {
    /// An unsigned 32-bit integer.
    std::uint32_t Data1;
    /// An unsigned 16-bit integer.
    std::uint16_t Data2;
    /// An unsigned 16-bit integer.
    std::uint16_t Data3;
    /// Eight bytes.
    unsigned char Data4[8];
};

/// The calling convention, or nothing.
#define WINAPI
/// The truth of `BOOL`. The number is fixed.
inline constexpr BOOL TRUE = 1;
/// The untruth of `BOOL`. The number is fixed.
inline constexpr BOOL FALSE = 0;
/// The reason of `DllMain` after loading.
inline constexpr DWORD DLL_PROCESS_ATTACH = 1;
/// Success of the calls with class identifiers. The number is fixed.
inline constexpr int S_OK = 0;
/// Success of a registry call. The number is fixed.
inline constexpr int ERROR_SUCCESS = 0;
/// The end of an enumeration (W9).
inline constexpr int ERROR_NO_MORE_ITEMS = 259;
/// The code page UTF-8. The number is fixed.
inline constexpr unsigned int CP_UTF8 = 65001;
/// The user's folder for the data of applications that stays on the machine.
inline constexpr int CSIDL_LOCAL_APPDATA = 28;
/// The type of a text value. No export reaches it: a stub will do.
inline constexpr DWORD REG_SZ = 1;
/// A key that is kept.
inline constexpr DWORD REG_OPTION_NON_VOLATILE = 0;
/// The right to query and to enumerate.
inline constexpr DWORD KEY_READ = 0x20019;
/// The right to set and to delete.
inline constexpr DWORD KEY_WRITE = 0x20006;
/// Other openers are denied nothing.
inline constexpr int _SH_DENYNO = 0x40;
/// The user's part of the registry.
extern const HKEY HKEY_CURRENT_USER;

extern "C" {
/// Called by the module's `DllMain`, which only Windows calls. The result is not looked at.
BOOL DisableThreadLibraryCalls(HMODULE module);
/// Reads an identifier from its text (W1). `S_OK`, or another number.
int CLSIDFromString(const wchar_t* text, CLSID* identifier);
/// Makes the text of an identifier (W1), for the module to release with `CoTaskMemFree`. `S_OK`, or another number.
int StringFromCLSID(const CLSID& identifier, wchar_t** text);
/// Releases such a text.
void CoTaskMemFree(void* memory);
/// Compares two texts and ignores case (W2). 0 for equal texts.
int _wcsicmp(const wchar_t* left, const wchar_t* right);
/// The same for so many characters at most. The texts need not have a NUL.
int _wcsnicmp(const wchar_t* left, const wchar_t* right, std::size_t characters);
/// Copies an environment variable into the buffer (W3). The buffer has 260 characters, the NUL included. `required` is
/// not null, and what it is set to is not looked at.
int _wgetenv_s(std::size_t* required, wchar_t* buffer, std::size_t characters, const wchar_t* name);
/// Copies the path of a folder into a buffer of 260 characters (W4). `owner` is null and `create` is `FALSE`.
BOOL SHGetSpecialFolderPathW(void* owner, wchar_t* path, int folder, BOOL create);
/// Opens a file for the functions of the standard library (W5). `mode` is `wt` or `rt`, and `sharing` is `_SH_DENYNO`.
/// A file that is read is positioned with `fseek` and `rewind` too, and may fail to: its length is only a hint. Null on
/// failure.
std::FILE* _wfsopen(const wchar_t* path, const wchar_t* mode, int sharing);
/// Converts text to wide text (W6). `flags` is 0. The module asks for the length first, with a null output of 0
/// characters.
int MultiByteToWideChar(unsigned int codePage, DWORD flags, const char* text, int length, wchar_t* output,
                        int characters);
/// Converts wide text to text (W6). `flags` is 0, and the last two arguments are null. The length is asked for in the
/// same way.
int WideCharToMultiByte(unsigned int codePage, DWORD flags, const wchar_t* text, int length, char* output, int bytes,
                        const char* defaultCharacter, BOOL* usedDefault);
/// Opens a key, and makes it where it is missing (W7). `reserved` is 0; the class, `security` and `disposition` are
/// null.
int RegCreateKeyExW(HKEY key, const wchar_t* subKey, DWORD reserved, wchar_t* className, DWORD options, DWORD access,
                    void* security, HKEY* result, DWORD* disposition);
/// Opens a key that is there (W7). `options` is 0.
int RegOpenKeyExW(HKEY key, const wchar_t* subKey, DWORD options, DWORD access, HKEY* result);
/// Closes a key. The result is not looked at.
int RegCloseKey(HKEY key);
/// Sets a value. Data are the bytes of a wide text and its NUL. No export reaches it: a stub will do.
int RegSetValueExW(HKEY key, const wchar_t* name, DWORD reserved, DWORD type, const BYTE* data, DWORD lengthInBytes);
/// Gives a value, or its length where `data` is null. No export reaches it: a stub will do.
int RegQueryValueExW(HKEY key, const wchar_t* name, DWORD* reserved, DWORD* type, BYTE* data, DWORD* lengthInBytes);
/// Gives the name of a value (W8, W9). `nameLength` is the buffer's length before, 2,048 characters with the NUL; what
/// it is set to is not looked at. The arguments after it are null. After any other failure than `ERROR_NO_MORE_ITEMS`
/// the module takes what is in the buffer up to its NUL for a name, and goes on.
int RegEnumValueW(HKEY key, DWORD index, wchar_t* name, DWORD* nameLength, DWORD* reserved, DWORD* type, BYTE* data,
                  DWORD* lengthInBytes);
/// Deletes a value (W10).
int RegDeleteValueW(HKEY key, const wchar_t* name);
}

#pragma GCC visibility pop

#endif
