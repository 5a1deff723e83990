// The names of a key's values, enumerated by the system and with room for each.
#pragma once

#include <string>
#include <vector>

namespace Tests {

/// Of a key of the current user's, in the order in which the registry has them.
std::vector<std::wstring> namesInRegistry(const std::wstring& subKey);

} // namespace Tests
