// Files that are replaced whole or not at all.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "platform/export.h"

namespace Embedded {

/// Writes the text so that the file holds either what it held before or all of it: a temporary file in the same folder,
/// flushed, renamed over, the folder flushed. A symbolic link is followed and the file's permissions are kept; a file
/// that may not be written to is not replaced either, nor is anything but a regular file.
/// Returns why it failed, without the file's name. A failure leaves the old file as it was and no temporary file
/// behind. One that a killed process has left is removed by the next replacement in its folder, on Windows by the user.
/// A link that leads to nothing is refused there.
[[nodiscard]] FQCORE_API std::optional<std::string> replaceFile(const std::filesystem::path& file,
                                                                std::string_view text);

} // namespace Embedded
