// The library that others are linked with to import from a DLL.
#pragma once

#include <filesystem>
#include <set>
#include <string>

namespace Tests {

/// The names that a linker finds in its table of symbols as imported ones, as the DLL exports them.
std::set<std::string> importableNames(const std::filesystem::path& library);

} // namespace Tests
