// Sets the folder for the user's data that SHGetSpecialFolderPathW returns in this process.
#pragma once

#include <filesystem>

namespace Tests {

/// Lasts as long as the test's registry (support/scoped_registry.h), or on POSIX systems as long as the environment.
void useLocalApplicationData(const std::filesystem::path& folder);

} // namespace Tests
