// Files that are replaced whole or not at all.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "embedded/host/file_result.h"
#include "platform/export.h"

namespace Embedded {

/// Writes the text so that the file holds either what it held before or all of it: a temporary file in the same folder,
/// flushed, renamed over, the folder flushed. A symbolic link is followed and the file's permissions are kept; a file
/// that may not be written to is not replaced either, nor is anything but a regular file.
/// eFileWriteFailed leaves the old file as it was and no temporary file behind.
QEHOST_API FileResult writeFileAtomically(const std::filesystem::path& file, std::string_view text);

} // namespace Embedded
