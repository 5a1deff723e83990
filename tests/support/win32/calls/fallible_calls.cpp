// The calls of the system that the module makes. The module's objects are linked into the test programs and make each
// call through a pointer of a known name. This file defines those pointers, so the linker ignores the import library's.
#include <cerrno>
#include <tuple>

#include "embedded/diagnostics/resource_counters.h"
#include "platform/win32.h"
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

/// Predefined keys are always open and do not count.
bool isCounted(HKEY key)
{
    return key != nullptr && (reinterpret_cast<ULONG_PTR>(key) & 0x80000000U) == 0;
}

/// The argument of type PHKEY points to the opened key.
constexpr auto kCountOpenedKey = [](LSTATUS status, auto... arguments) {
    if (status == ERROR_SUCCESS && isCounted(*std::get<PHKEY>(std::tuple(arguments...))))
        ResourceCounters::add(ResourceKind::registryKey);
};

constexpr FallibleCall<decltype(RegCreateKeyExW)> kRegCreateKeyEx{kRegistry, "RegCreateKeyExW", ERROR_ACCESS_DENIED,
                                                                  kCountOpenedKey};
constexpr FallibleCall<decltype(RegOpenKeyExW)> kRegOpenKeyEx{kRegistry, "RegOpenKeyExW", ERROR_ACCESS_DENIED,
                                                              kCountOpenedKey};
constexpr FallibleCall<decltype(RegSetValueExW)> kRegSetValueEx{kRegistry, "RegSetValueExW", ERROR_ACCESS_DENIED};
constexpr FallibleCall<decltype(RegQueryValueExW)> kRegQueryValueEx{kRegistry, "RegQueryValueExW",
                                                                    ERROR_FILE_NOT_FOUND};
constexpr FallibleCall<decltype(RegEnumValueW)> kRegEnumValue{kRegistry, "RegEnumValueW", ERROR_NO_MORE_ITEMS};
constexpr FallibleCall<decltype(RegDeleteValueW)> kRegDeleteValue{kRegistry, "RegDeleteValueW", ERROR_ACCESS_DENIED};

// Calls that release something never fail.
LSTATUS closeKey(HKEY key)
{
    static const auto real = systemFunction<decltype(RegCloseKey)>(kRegistry, "RegCloseKey");
    const LSTATUS status = real(key);
    if (status == ERROR_SUCCESS && isCounted(key))
        ResourceCounters::remove(ResourceKind::registryKey);
    return status;
}

constexpr FallibleCall<decltype(CLSIDFromString)> kClsidFromString{kCom, "CLSIDFromString", CO_E_CLASSSTRING};
constexpr FallibleCall<decltype(StringFromCLSID)> kStringFromClsid{
    kCom, "StringFromCLSID", E_OUTOFMEMORY, [](HRESULT result, REFCLSID /*id*/, LPOLESTR* text) {
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

constexpr FallibleCall<decltype(MultiByteToWideChar)> kMultiByteToWideChar{kKernel, "MultiByteToWideChar", 0};
constexpr FallibleCall<decltype(WideCharToMultiByte)> kWideCharToMultiByte{kKernel, "WideCharToMultiByte", 0};
constexpr FallibleCall<decltype(DisableThreadLibraryCalls)> kDisableThreadLibraryCalls{
    kKernel, "DisableThreadLibraryCalls", FALSE};
constexpr FallibleCall<decltype(SHGetSpecialFolderPathW)> kSpecialFolderPath{kShell, "SHGetSpecialFolderPathW", FALSE};
// The header overloads the name for arrays.
using GetVariable = errno_t(std::size_t*, wchar_t*, std::size_t, const wchar_t*);
constexpr FallibleCall<GetVariable> kGetVariable{kCRuntime, "_wgetenv_s", ENOMEM};

} // namespace

extern "C" {
decltype(&RegCreateKeyExW) __imp_RegCreateKeyExW = callOrFail<kRegCreateKeyEx>;
decltype(&RegOpenKeyExW) __imp_RegOpenKeyExW = callOrFail<kRegOpenKeyEx>;
decltype(&RegSetValueExW) __imp_RegSetValueExW = callOrFail<kRegSetValueEx>;
decltype(&RegQueryValueExW) __imp_RegQueryValueExW = callOrFail<kRegQueryValueEx>;
decltype(&RegEnumValueW) __imp_RegEnumValueW = callOrFail<kRegEnumValue>;
decltype(&RegDeleteValueW) __imp_RegDeleteValueW = callOrFail<kRegDeleteValue>;
decltype(&RegCloseKey) __imp_RegCloseKey = closeKey;
decltype(&CLSIDFromString) __imp_CLSIDFromString = callOrFail<kClsidFromString>;
decltype(&StringFromCLSID) __imp_StringFromCLSID = callOrFail<kStringFromClsid>;
decltype(&CoTaskMemFree) __imp_CoTaskMemFree = freeComMemory;
decltype(&MultiByteToWideChar) __imp_MultiByteToWideChar = callOrFail<kMultiByteToWideChar>;
decltype(&WideCharToMultiByte) __imp_WideCharToMultiByte = callOrFail<kWideCharToMultiByte>;
decltype(&DisableThreadLibraryCalls) __imp_DisableThreadLibraryCalls = callOrFail<kDisableThreadLibraryCalls>;
decltype(&SHGetSpecialFolderPathW) __imp_SHGetSpecialFolderPathW = callOrFail<kSpecialFolderPath>;
GetVariable* __imp__wgetenv_s = callOrFail<kGetVariable>;
} // extern "C"

} // namespace Tests
