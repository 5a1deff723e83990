#include "orvelcs/drawing/registry_store.h"

#include <type_traits>

#include "embedded/windows/registry_file.h"
#include "orvelcs/cli/failure.h"
#include "orvelcs/drawing/holders.h"
#include "platform/win32.h"

namespace Orvelcs {
namespace {

struct CloseRegistryKey {
    void operator()(HKEY key) const { static_cast<void>(RegCloseKey(key)); } // it was only read
};
using RegistryKey = Holder<std::remove_pointer_t<HKEY>, CloseRegistryKey>;

std::wstring storeKey()
{
    const QeDbHostApplicationServices* const services = qedbHostApplicationServices();
    const wchar_t* const root = services != nullptr ? services->getUserRegistryProductRootKey() : nullptr;
    return (root != nullptr ? root : L"") + std::wstring(L"\\Applications\\OrvelCoordinateSystem\\Transformation");
}

void requireRead(LSTATUS status)
{
    if (status != ERROR_SUCCESS)
        throw Failure(kRegistryStore, "cannot be read");
}

/// The name of the value at the index; nothing behind the last one.
std::optional<std::wstring> valueName(const RegistryKey& key, DWORD index)
{
    constexpr DWORD kLongestName = 16383; // in characters, the registry's own limit
    std::wstring name(kLongestName + 1, L'\0');
    DWORD length = kLongestName + 1;
    const LSTATUS status = RegEnumValueW(key.get(), index, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
    if (status == ERROR_NO_MORE_ITEMS)
        return std::nullopt;
    requireRead(status);
    name.resize(length);
    return name;
}

/// The value's text up to its NUL.
std::wstring valueText(const RegistryKey& key, const std::wstring& name)
{
    DWORD lengthInBytes = 0;
    requireRead(RegQueryValueExW(key.get(), name.c_str(), nullptr, nullptr, nullptr, &lengthInBytes));
    std::wstring text(lengthInBytes, L'\0'); // longer than the value, so that it ends with a NUL in any case
    requireRead(RegQueryValueExW(key.get(), name.c_str(), nullptr, nullptr, reinterpret_cast<BYTE*>(text.data()),
                                 &lengthInBytes));
    return text.substr(0, text.find(L'\0'));
}

} // namespace

std::optional<std::wstring> readRegistryStore()
{
    if (const auto checked = Embedded::checkRegistryFile(); !checked)
        throw Failure(kRegistryStore, checked.error().text());
    RegistryKey key;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, storeKey().c_str(), 0, KEY_READ, &key.put()) != ERROR_SUCCESS)
        return std::nullopt;
    std::wstring text;
    DWORD index = 0;
    while (const std::optional<std::wstring> name = valueName(key, index++))
        text += valueText(key, *name);
    return text;
}

} // namespace Orvelcs
