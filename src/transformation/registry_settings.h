// The user's transformation configuration in the registry: a value for each item.
#pragma once

#include <string>

namespace Orvel {

/// The key of the store, relative to HKEY_CURRENT_USER; asked of the host anew each time.
[[nodiscard]] std::wstring registrySettingsKey();

/// Replaces every named value of the store by the items of `text`. False at the first step that fails; what was deleted
/// or written before stays so.
[[nodiscard]] bool WriteRegistryTransformationSettings(const wchar_t* text);

/// On true `text` is a new host string with the values joined in the registry's order, to be released with
/// qeutDelBuffer; on false it is untouched. Makes the store's keys where they are missing.
[[nodiscard]] bool ReadRegistryTransformationSettings(wchar_t*& text);

} // namespace Orvel
