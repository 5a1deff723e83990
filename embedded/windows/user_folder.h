// Where the user keeps what programs need.
#pragma once

#include <filesystem>
#include <optional>

namespace Embedded {

/// The folder that the environment variable names, where it is absolute; else the one at that place in the user's home.
/// Nothing when there is no home either.
std::optional<std::filesystem::path> userFolder(const char* variable, const std::filesystem::path& belowHome);

} // namespace Embedded
