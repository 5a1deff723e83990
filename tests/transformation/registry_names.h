// The names of a key's values, enumerated by the system and with room for each.
#pragma once

#include <string>
#include <vector>

namespace Tests {

/// The names of the values of a key of the current user, in the registry's order.
std::vector<std::wstring> namesInRegistry(const std::wstring& subKey);

} // namespace Tests
