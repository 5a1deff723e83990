// The registry's store of the user's transformation configuration (docs/formats/transformation-stores.md). The module
// empties it and exports no function that reads it.
#pragma once

#include <optional>
#include <string>

namespace Orvelcs {

/// What messages call the store.
inline constexpr const char* kRegistryStore = "registry store";

/// The texts of its values, joined in the registry's order; nothing where there is no store. Reading creates no key.
/// Throws Failure when the registry is damaged or the store cannot be read.
std::optional<std::wstring> readRegistryStore();

} // namespace Orvelcs
