// Lists the names of a key's values with the system's own calls and a buffer that is large enough for each.
#pragma once

#include <string>
#include <vector>

namespace Tests {

/// Lists the names of the values of a key of the current user, in the registry's order.
std::vector<std::wstring> enumerateRegistryNames(const std::wstring& subKey);

} // namespace Tests
