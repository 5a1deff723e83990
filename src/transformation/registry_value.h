// Texts in the registry, each call with a key handle of its own.
#pragma once

#include <string>
#include <vector>

#include "platform/windows.h"

namespace Orvel {

/// Makes the key if it is missing and sets the value; an empty name only makes the key.
[[nodiscard]] bool RegistrySetString(HKEY root, const std::wstring& subKey, const std::wstring& name,
                                     const std::wstring& data);

/// The value's bytes as text up to the first NUL, whatever its type. On failure `data` is untouched, or empty when the
/// value was there but could not be read.
[[nodiscard]] bool RegistryQueryString(HKEY root, const std::wstring& subKey, const std::wstring& name,
                                       std::wstring& data);

/// The names in the order in which the registry has them; an empty one for the key's default value, and for each that
/// cannot be read. Only the registry's answer that there are no more ends the list.
[[nodiscard]] bool RegistryEnumValueNames(HKEY root, const std::wstring& subKey, std::vector<std::wstring>& names);

/// Makes the key if it is missing and deletes the value; an empty name deletes none.
[[nodiscard]] bool RegistryDeleteValue(HKEY root, const std::wstring& subKey, const std::wstring& name);

} // namespace Orvel
