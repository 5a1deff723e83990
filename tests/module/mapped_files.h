// Shared libraries that the system has mapped into the process, whether the host knows them or not.
#pragma once

#include <filesystem>

namespace Tests {

bool isMapped(const std::filesystem::path& file);

/// Returns false when the file cannot be mapped.
[[nodiscard]] bool mapAndUnmap(const std::filesystem::path& file);

} // namespace Tests
