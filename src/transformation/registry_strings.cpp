#include "transformation/registry_strings.h"

#include <algorithm>
#include <array>

#include "storage/holder.h"
#include "storage/ignore_result.h"

namespace Orvel {
namespace {

struct RegistryKeyPolicy {
    using Handle = HKEY;
    static void dispose(HKEY key)
    {
        ignoreResult([=] { return RegCloseKey(key); });
    }
};
using RegistryKey = Holder<RegistryKeyPolicy>;

constexpr std::size_t kNameCapacity = 2048; // in characters, the NUL included

RegistryKey createKey(HKEY root, const std::wstring& subKey)
{
    RegistryKey key;
    if (RegCreateKeyExW(root, subKey.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE, nullptr, &key.put(),
                        nullptr) != ERROR_SUCCESS)
        return {};
    return key;
}

RegistryKey openKey(HKEY root, const std::wstring& subKey)
{
    RegistryKey key;
    return RegOpenKeyExW(root, subKey.c_str(), 0, KEY_READ, &key.put()) == ERROR_SUCCESS ? std::move(key)
                                                                                         : RegistryKey();
}

BYTE* asBytes(wchar_t* text)
{
    return reinterpret_cast<BYTE*>(text);
}

} // namespace

bool RegistrySetString(HKEY root, const std::wstring& subKey, const std::wstring& name, const std::wstring& data)
{
    const RegistryKey key = createKey(root, subKey);
    if (!key)
        return false;
    if (name.empty())
        return true;
    const auto lengthInBytes = static_cast<DWORD>((data.size() + 1) * sizeof(wchar_t));
    return RegSetValueExW(key.get(), name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(data.c_str()),
                          lengthInBytes) == ERROR_SUCCESS;
}

bool RegistryQueryString(HKEY root, const std::wstring& subKey, const std::wstring& name, std::wstring& data)
{
    const RegistryKey key = openKey(root, subKey);
    DWORD lengthInBytes = 0;
    if (!key || RegQueryValueExW(key.get(), name.c_str(), nullptr, nullptr, nullptr, &lengthInBytes) != ERROR_SUCCESS)
        return false;
    // The buffer has a character for each byte, so that zeros follow a value that lacks its NUL.
    std::wstring buffer(lengthInBytes, L'\0');
    if (RegQueryValueExW(key.get(), name.c_str(), nullptr, nullptr, asBytes(buffer.data()), &lengthInBytes) !=
        ERROR_SUCCESS) {
        data.clear();
        return false;
    }
    data = buffer.substr(0, buffer.find(L'\0'));
    return true;
}

bool RegistryEnumValueNames(HKEY root, const std::wstring& subKey, std::vector<std::wstring>& names)
{
    names.clear();
    const RegistryKey key = openKey(root, subKey);
    if (!key)
        return false;
    std::array<wchar_t, kNameCapacity> name{};
    // Only ERROR_NO_MORE_ITEMS ends the list. A registry that fails in another way at every index is read without end.
    for (DWORD index = 0;; ++index) {
        DWORD length = kNameCapacity;
        if (RegEnumValueW(key.get(), index, name.data(), &length, nullptr, nullptr, nullptr, nullptr) ==
            ERROR_NO_MORE_ITEMS)
            return true;
        names.emplace_back(name.begin(), std::ranges::find(name, L'\0')); // there may be no NUL after a failed call
        name.fill(L'\0');
    }
}

bool RegistryDeleteValue(HKEY root, const std::wstring& subKey, const std::wstring& name)
{
    const RegistryKey key = createKey(root, subKey);
    if (!key)
        return false;
    return name.empty() || RegDeleteValueW(key.get(), name.c_str()) == ERROR_SUCCESS;
}

} // namespace Orvel
