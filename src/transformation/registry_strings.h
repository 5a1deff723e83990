// Sets, reads, lists and deletes string values of a registry key. Each call opens and closes a handle of its own.
#pragma once

#include <string>
#include <vector>

#include "platform/win32.h"

namespace Orvel {

/// Makes the key if it is missing and sets the value. An empty name only makes the key.
[[nodiscard]] bool RegistrySetString(HKEY root, const std::wstring& subKey, const std::wstring& name,
                                     const std::wstring& data);

/// Reads the value's bytes as text up to the first NUL, whatever its type. On failure `data` is unchanged, or empty
/// when the value exists but cannot be read.
[[nodiscard]] bool RegistryQueryString(HKEY root, const std::wstring& subKey, const std::wstring& name,
                                       std::wstring& data);

/// Lists the names in the registry's order. The key's default value, and each name that cannot be read, is an empty
/// name. Only ERROR_NO_MORE_ITEMS ends the list.
[[nodiscard]] bool RegistryEnumValueNames(HKEY root, const std::wstring& subKey, std::vector<std::wstring>& names);

/// Makes the key if it is missing and deletes the value. An empty name deletes none.
[[nodiscard]] bool RegistryDeleteValue(HKEY root, const std::wstring& subKey, const std::wstring& name);

} // namespace Orvel
