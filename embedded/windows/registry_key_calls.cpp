#include <string>

#include "embedded/windows/registry_call.h"
#include "embedded/windows/registry_handle.h"
#include "embedded/windows/registry_name.h"
#include "embedded/windows/registry_transaction.h"
#include "platform/win32.h"

namespace {

using namespace Embedded;
using Intent = RegistryTransaction::Intent;

constexpr REGSAM kMaximumAllowed = 0x02000000;

REGSAM grantedAccess(REGSAM access)
{
    return (access & kMaximumAllowed) != 0 ? KEY_ALL_ACCESS : access;
}

/// The sub-key's path from the root. Throws ErrorException for an invalid handle or path.
std::wstring pathBelow(HKEY key, const wchar_t* subKey)
{
    requireHandle(key);
    std::wstring path = key->path;
    const std::wstring below = normalName(subKey);
    if (below.starts_with(L'\\'))
        failRegistryCall(ERROR_BAD_PATHNAME);
    for (const std::wstring_view part : pathParts(below)) {
        if (utf16Length(part) > kLongestKeyName)
            failRegistryCall(ERROR_INVALID_PARAMETER);
        path += (path.empty() ? L"" : L"\\") + std::wstring(part);
    }
    return path;
}

bool keyExists(const std::wstring& path)
{
    return RegistryTransaction(Intent::read).findKey(path).has_value();
}

/// Creates the key if it is missing. Returns whether this call created it.
bool ensureKey(const std::wstring& path)
{
    if (keyExists(path))
        return false;
    RegistryTransaction change(Intent::create);
    const bool isNew = !change.findKey(path); // another process may have created it meanwhile
    change.createKey(path);
    change.commit();
    return isNew;
}

} // namespace

LSTATUS RegCreateKeyExW(HKEY key, const wchar_t* subKey, DWORD reserved, wchar_t*, DWORD options, REGSAM access, void*,
                        HKEY* result, DWORD* disposition)
{
    return registryCall("RegCreateKeyExW", ERROR_ACCESS_DENIED, [&]() -> LSTATUS {
        if (subKey == nullptr || reserved != 0 || options != REG_OPTION_NON_VOLATILE || result == nullptr)
            return ERROR_INVALID_PARAMETER;
        const std::wstring path = pathBelow(key, subKey);
        const bool created = ensureKey(path);
        *result = openHandle(path, grantedAccess(access));
        if (disposition != nullptr)
            *disposition = created ? REG_CREATED_NEW_KEY : REG_OPENED_EXISTING_KEY;
        return ERROR_SUCCESS;
    });
}

LSTATUS RegOpenKeyExW(HKEY key, const wchar_t* subKey, DWORD options, REGSAM access, HKEY* result)
{
    return registryCall("RegOpenKeyExW", ERROR_ACCESS_DENIED, [&]() -> LSTATUS {
        if (options != 0 || result == nullptr)
            return ERROR_INVALID_PARAMETER;
        const std::wstring path = pathBelow(key, subKey);
        if (!keyExists(path))
            return ERROR_FILE_NOT_FOUND;
        *result = openHandle(path, grantedAccess(access));
        return ERROR_SUCCESS;
    });
}

// No failure is injected here, because closing must always succeed.
LSTATUS RegCloseKey(HKEY key)
{
    return closeHandle(key) ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
}
