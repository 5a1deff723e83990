// The calls of the system that the module makes. Its objects, which are linked into the test programs, reach each
// through a pointer of a known name; those pointers are defined here, and so an import library's are not taken.
#include <cerrno>
#include <tuple>

#include "embedded/diagnostics/resource_counters.h"
#include "platform/windows.h"
#include "support/win32/calls/fallible_call.h"

namespace Tests {
namespace {

using Embedded::ResourceCounters;
using Embedded::ResourceKind;

constexpr const wchar_t* kKernel = L"kernel32.dll";
constexpr const wchar_t* kRegistry = L"advapi32.dll";
constexpr const wchar_t* kCom = L"ole32.dll";
constexpr const wchar_t* kShell = L"shell32.dll";
constexpr const wchar_t* kCRuntime = L"msvcrt.dll";

/// Predefined ones are open without having been opened.
bool isCounted(HKEY key)
{
    return key != nullptr && (reinterpret_cast<ULONG_PTR>(key) & 0x80000000U) == 0;
}

/// The only argument of its type is where the key was put.
constexpr auto kCountOpenedKey = [](LSTATUS status, auto... arguments) {
    if (status == ERROR_SUCCESS && isCounted(*std::get<PHKEY>(std::tuple(arguments...))))
        ResourceCounters::add(ResourceKind::registryKey);
};

constexpr StruckCall<decltype(RegCreateKeyExW)> kRegCreateKeyEx{kRegistry, "RegCreateKeyExW", ERROR_ACCESS_DENIED,
                                                                kCountOpenedKey};
constexpr StruckCall<decltype(RegOpenKeyExW)> kRegOpenKeyEx{kRegistry, "RegOpenKeyExW", ERROR_ACCESS_DENIED,
                                                            kCountOpenedKey};
constexpr StruckCall<decltype(RegSetValueExW)> kRegSetValueEx{kRegistry, "RegSetValueExW", ERROR_ACCESS_DENIED};
constexpr StruckCall<decltype(RegQueryValueExW)> kRegQueryValueEx{kRegistry, "RegQueryValueExW", ERROR_FILE_NOT_FOUND};
constexpr StruckCall<decltype(RegEnumValueW)> kRegEnumValue{kRegistry, "RegEnumValueW", ERROR_NO_MORE_ITEMS};
constexpr StruckCall<decltype(RegDeleteValueW)> kRegDeleteValue{kRegistry, "RegDeleteValueW", ERROR_ACCESS_DENIED};

// What ends something is never made to fail.
LSTATUS closeKey(HKEY key)
{
    static const auto real = systemFunction<decltype(RegCloseKey)>(kRegistry, "RegCloseKey");
    const LSTATUS status = real(key);
    if (status == ERROR_SUCCESS && isCounted(key))
        ResourceCounters::remove(ResourceKind::registryKey);
    return status;
}

constexpr StruckCall<decltype(CLSIDFromString)> kClsidFromString{kCom, "CLSIDFromString", CO_E_CLASSSTRING};
constexpr StruckCall<decltype(StringFromCLSID)> kStringFromClsid{kCom, "StringFromCLSID", E_OUTOFMEMORY,
                                                                 [](HRESULT result, REFCLSID /*id*/, LPOLESTR* text) {
                                                                     if (result == S_OK && *text != nullptr)
                                                                         ResourceCounters::add(ResourceKind::comMemory);
                                                                 }};

void freeComMemory(void* memory)
{
    static const auto real = systemFunction<decltype(CoTaskMemFree)>(kCom, "CoTaskMemFree");
    real(memory);
    if (memory != nullptr)
        ResourceCounters::remove(ResourceKind::comMemory);
}

constexpr StruckCall<decltype(MultiByteToWideChar)> kMultiByteToWideChar{kKernel, "MultiByteToWideChar", 0};
constexpr StruckCall<decltype(WideCharToMultiByte)> kWideCharToMultiByte{kKernel, "WideCharToMultiByte", 0};
constexpr StruckCall<decltype(DisableThreadLibraryCalls)> kDisableThreadLibraryCalls{
    kKernel, "DisableThreadLibraryCalls", FALSE};
constexpr StruckCall<decltype(SHGetSpecialFolderPathW)> kSpecialFolderPath{kShell, "SHGetSpecialFolderPathW", FALSE};
// The header has one more of that name, which takes arrays.
using GetVariable = errno_t(std::size_t*, wchar_t*, std::size_t, const wchar_t*);
constexpr StruckCall<GetVariable> kGetVariable{kCRuntime, "_wgetenv_s", ENOMEM};

} // namespace

extern "C" {
decltype(&RegCreateKeyExW) __imp_RegCreateKeyExW = struck<kRegCreateKeyEx>;
decltype(&RegOpenKeyExW) __imp_RegOpenKeyExW = struck<kRegOpenKeyEx>;
decltype(&RegSetValueExW) __imp_RegSetValueExW = struck<kRegSetValueEx>;
decltype(&RegQueryValueExW) __imp_RegQueryValueExW = struck<kRegQueryValueEx>;
decltype(&RegEnumValueW) __imp_RegEnumValueW = struck<kRegEnumValue>;
decltype(&RegDeleteValueW) __imp_RegDeleteValueW = struck<kRegDeleteValue>;
decltype(&RegCloseKey) __imp_RegCloseKey = closeKey;
decltype(&CLSIDFromString) __imp_CLSIDFromString = struck<kClsidFromString>;
decltype(&StringFromCLSID) __imp_StringFromCLSID = struck<kStringFromClsid>;
decltype(&CoTaskMemFree) __imp_CoTaskMemFree = freeComMemory;
decltype(&MultiByteToWideChar) __imp_MultiByteToWideChar = struck<kMultiByteToWideChar>;
decltype(&WideCharToMultiByte) __imp_WideCharToMultiByte = struck<kWideCharToMultiByte>;
decltype(&DisableThreadLibraryCalls) __imp_DisableThreadLibraryCalls = struck<kDisableThreadLibraryCalls>;
decltype(&SHGetSpecialFolderPathW) __imp_SHGetSpecialFolderPathW = struck<kSpecialFolderPath>;
GetVariable* __imp__wgetenv_s = struck<kGetVariable>;
} // extern "C"

} // namespace Tests
