// The folder for the user's data, as SHGetSpecialFolderPathW answers it in this process.
#pragma once

#include <filesystem>

namespace Tests {

/// Chooses the folder for as long as the registry of the test's own is in use (support/scoped_registry.h), or on POSIX
/// systems the environment.
void useLocalApplicationData(const std::filesystem::path& folder);

} // namespace Tests
