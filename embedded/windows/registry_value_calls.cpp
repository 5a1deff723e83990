#include <algorithm>
#include <optional>
#include <string>
#include <utility>

#include "embedded/windows/registry_call.h"
#include "embedded/windows/registry_handle.h"
#include "embedded/windows/registry_name.h"
#include "embedded/windows/registry_transaction.h"
#include "platform/win32.h"

namespace {

using namespace Embedded;
using Intent = RegistryTransaction::Intent;

constexpr DWORD kLongestData = 1'000'000'000; // SQLite takes no more

/// Throws ErrorException if the key no longer exists because the file was replaced after the handle was opened.
RegistryRow requireKey(HKEY key, const RegistryTransaction& registry)
{
    std::optional<RegistryRow> row = registry.findKey(key->path);
    if (!row)
        failRegistryCall(ERROR_KEY_DELETED);
    return *std::move(row);
}

/// Copies the value's type and data to the outputs that are not null. Without `data`, only the length is set.
LSTATUS copyTo(const RegistryRow& value, DWORD* type, BYTE* data, DWORD* lengthInBytes)
{
    if (type != nullptr)
        *type = value.type;
    if (lengthInBytes == nullptr)
        return ERROR_SUCCESS;
    const DWORD room = *lengthInBytes;
    *lengthInBytes = static_cast<DWORD>(value.data.size());
    if (data == nullptr)
        return ERROR_SUCCESS;
    if (room < value.data.size())
        return ERROR_MORE_DATA;
    std::ranges::copy(value.data, data);
    return ERROR_SUCCESS;
}

} // namespace

LSTATUS RegSetValueExW(HKEY key, const wchar_t* name, DWORD reserved, DWORD type, const BYTE* data, DWORD lengthInBytes)
{
    return registryCall("RegSetValueExW", ERROR_ACCESS_DENIED, [&]() -> LSTATUS {
        requireHandle(key, KEY_SET_VALUE);
        const std::wstring valueName = normalName(name);
        if (data == nullptr && lengthInBytes != 0)
            return ERROR_NOACCESS;
        if (reserved != 0 || utf16Length(valueName) > kLongestValueName)
            return ERROR_INVALID_PARAMETER;
        if (lengthInBytes > kLongestData)
            return ERROR_OUTOFMEMORY;
        // The root exists even before its file does.
        RegistryTransaction change(key->path.empty() ? Intent::create : Intent::change);
        RegistryRow value{.name = valueName, .type = type, .data = {}};
        if (lengthInBytes > 0)
            value.data.assign(reinterpret_cast<const char*>(data), lengthInBytes);
        change.setValue(requireKey(key, change), std::move(value));
        change.commit();
        return ERROR_SUCCESS;
    });
}

// NOLINTNEXTLINE(readability-non-const-parameter): the signature is the system's
LSTATUS RegQueryValueExW(HKEY key, const wchar_t* name, DWORD* reserved, DWORD* type, BYTE* data, DWORD* lengthInBytes)
{
    return registryCall("RegQueryValueExW", ERROR_FILE_NOT_FOUND, [&]() -> LSTATUS {
        requireHandle(key, KEY_QUERY_VALUE);
        if (reserved != nullptr || (data != nullptr && lengthInBytes == nullptr))
            return ERROR_INVALID_PARAMETER;
        const RegistryTransaction registry(Intent::read);
        const auto value = registry.findValue(requireKey(key, registry), normalName(name));
        return value ? copyTo(*value, type, data, lengthInBytes) : ERROR_FILE_NOT_FOUND;
    });
}

// The injected failure is ERROR_NO_MORE_ITEMS, since with any other an enumeration might never end.
// NOLINTNEXTLINE(readability-non-const-parameter): the signature is the system's
LSTATUS RegEnumValueW(HKEY key, DWORD index, wchar_t* name, DWORD* nameLength, DWORD* reserved, DWORD* type, BYTE* data,
                      DWORD* lengthInBytes)
{
    return registryCall("RegEnumValueW", ERROR_NO_MORE_ITEMS, [&]() -> LSTATUS {
        requireHandle(key, KEY_QUERY_VALUE);
        if (name == nullptr || nameLength == nullptr || reserved != nullptr ||
            (data != nullptr && lengthInBytes == nullptr))
            return ERROR_INVALID_PARAMETER;
        const RegistryTransaction registry(Intent::read);
        const auto value = registry.valueAt(requireKey(key, registry), index);
        if (!value)
            return ERROR_NO_MORE_ITEMS;
        if (*nameLength <= value->name.size())
            return ERROR_MORE_DATA;
        if (const LSTATUS status = copyTo(*value, type, data, lengthInBytes); status != ERROR_SUCCESS)
            return status;
        std::copy_n(value->name.c_str(), value->name.size() + 1, name);
        *nameLength = static_cast<DWORD>(value->name.size());
        return ERROR_SUCCESS;
    });
}

LSTATUS RegDeleteValueW(HKEY key, const wchar_t* name)
{
    return registryCall("RegDeleteValueW", ERROR_ACCESS_DENIED, [&]() -> LSTATUS {
        requireHandle(key, KEY_SET_VALUE);
        RegistryTransaction change(Intent::change);
        const auto value = change.findValue(requireKey(key, change), normalName(name));
        if (!value)
            return ERROR_FILE_NOT_FOUND;
        change.remove(*value);
        change.commit();
        return ERROR_SUCCESS;
    });
}
