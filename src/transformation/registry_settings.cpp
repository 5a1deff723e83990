#include "transformation/registry_settings.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "transformation/config_text.h"
#include "transformation/item_text.h"
#include "transformation/registry_strings.h"

namespace Orvel {
namespace {

std::wstring applicationKey()
{
    const QeDbHostApplicationServices* const services = qedbHostApplicationServices();
    const wchar_t* const root = services != nullptr ? services->getUserRegistryProductRootKey() : nullptr;
    return (root != nullptr ? root : L"") + std::wstring(L"\\Applications\\OrvelCoordinateSystem");
}

std::wstring storeKey(const std::wstring& application)
{
    return application + L"\\Transformation";
}

bool ensureKey(const std::wstring& subKey)
{
    return RegistrySetString(HKEY_CURRENT_USER, subKey, {}, {});
}

/// Makes both keys of the store. `subKey` becomes the key with the values.
bool ensureStore(std::wstring& subKey)
{
    const std::wstring application = applicationKey();
    subKey = storeKey(application);
    return ensureKey(application) && ensureKey(subKey);
}

bool listStore(std::wstring& subKey, std::vector<std::wstring>& names)
{
    return ensureStore(subKey) && RegistryEnumValueNames(HKEY_CURRENT_USER, subKey, names);
}

/// Allocates the full length at once, because a text that grows needs up to three times its length.
HostString join(const std::vector<std::wstring>& parts)
{
    std::size_t characters = 1;
    for (const std::wstring& part : parts)
        characters += part.size();
    HostString whole = newConfigText(characters);
    if (!whole)
        return {};
    wchar_t* end = whole.get();
    for (const std::wstring& part : parts)
        end = std::copy(part.begin(), part.end(), end);
    return whole;
}

} // namespace

std::wstring registrySettingsKey()
{
    return storeKey(applicationKey());
}

bool WriteRegistryTransformationSettings(const wchar_t* text)
{
    std::wstring subKey;
    std::vector<std::wstring> names;
    if (!listStore(subKey, names))
        return false;
    for (const std::wstring& name : names) {
        if (!RegistryDeleteValue(HKEY_CURRENT_USER, subKey, name))
            return false;
    }
    int position = 0;
    for (const std::wstring_view chunk : SplitIntoItemChunks(text)) {
        if (!RegistrySetString(HKEY_CURRENT_USER, subKey, L"Item" + std::to_wstring(++position), std::wstring(chunk)))
            return false;
    }
    return true;
}

bool ReadRegistryTransformationSettings(wchar_t*& text)
{
    std::wstring subKey;
    std::vector<std::wstring> texts;
    if (!listStore(subKey, texts))
        return false;
    for (std::wstring& each : texts) {
        std::wstring value;
        if (!RegistryQueryString(HKEY_CURRENT_USER, subKey, each, value))
            return false;
        each = std::move(value); // replaces its name, to save memory
    }
    HostString whole = join(texts);
    if (!whole)
        return false;
    text = whole.release();
    return true;
}

} // namespace Orvel
