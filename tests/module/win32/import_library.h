// Reads the import library of a DLL.
#pragma once

#include <filesystem>
#include <set>
#include <string>

namespace Tests {

/// The imported names in the library's symbol table, as the DLL exports them.
std::set<std::string> importableNames(const std::filesystem::path& library);

} // namespace Tests
