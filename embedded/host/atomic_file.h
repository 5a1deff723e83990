// Files that are replaced whole or not at all.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "embedded/host/file_result.h"
#include "platform/export.h"

namespace Embedded {

/// Replaces the file as `replaceFile` does. eFileWriteFailed leaves the old file as it was and no temporary file
/// behind.
QEHOST_API FileResult writeFileAtomically(const std::filesystem::path& file, std::string_view text);

} // namespace Embedded
