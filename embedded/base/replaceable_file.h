// Which file is replaced where a name is written to.
#pragma once

#include <filesystem>

namespace Embedded {

/// Follows links, whether or not there is a file at their end. Throws std::system_error for a file that may not be
/// written to, and for anything but a regular file.
std::filesystem::path replaceableFile(const std::filesystem::path& file);

} // namespace Embedded
