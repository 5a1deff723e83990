// Shared libraries in the process, as the system has them, without the host's part in it.
#pragma once

#include <filesystem>

namespace Tests {

bool isMapped(const std::filesystem::path& file);

/// False when it cannot be mapped.
[[nodiscard]] bool mapAndUnmap(const std::filesystem::path& file);

} // namespace Tests
