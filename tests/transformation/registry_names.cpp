#include "registry_names.h"

#include <stdexcept>

#include "platform/win32.h"

namespace Tests {

std::vector<std::wstring> enumerateRegistryNames(const std::wstring& subKey)
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, subKey.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
        throw std::runtime_error("the key does not exist");
    std::vector<std::wstring> names;
    std::wstring name(16'384, L'\0');
    auto length = static_cast<DWORD>(name.size());
    while (RegEnumValueW(key, static_cast<DWORD>(names.size()), name.data(), &length, nullptr, nullptr, nullptr,
                         nullptr) == ERROR_SUCCESS) {
        names.push_back(name.substr(0, length));
        length = static_cast<DWORD>(name.size());
    }
    static_cast<void>(RegCloseKey(key)); // the fixture detects a key that stays open
    return names;
}

} // namespace Tests
