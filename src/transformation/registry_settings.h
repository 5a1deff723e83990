// The user's transformation configuration in the registry: a value for each item.
#pragma once

#include <string>

namespace Orvel {

/// The key of the store, relative to HKEY_CURRENT_USER. Each call asks the host for its registry root.
[[nodiscard]] std::wstring registrySettingsKey();

/// Replaces every named value of the store by the items of `text`. Returns false at the first step that fails, and does
/// not undo the steps before it.
[[nodiscard]] bool WriteRegistryTransformationSettings(const wchar_t* text);

/// On true `text` is a new host string with the values joined in the registry's order, which the caller releases with
/// qeutDelBuffer. On false it is unchanged. Makes the store's keys where they are missing.
[[nodiscard]] bool ReadRegistryTransformationSettings(wchar_t*& text);

} // namespace Orvel
