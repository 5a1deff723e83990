// The folders in which programs keep the user's files.
#pragma once

#include <filesystem>
#include <optional>

namespace Embedded {

/// The folder that the environment variable names, if it is an absolute path; otherwise the folder `belowHome` in the
/// user's home. Nothing if there is no home either.
std::optional<std::filesystem::path> userFolder(const char* variable, const std::filesystem::path& belowHome);

} // namespace Embedded
