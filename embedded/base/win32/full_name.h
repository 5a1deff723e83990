// Full names of files.
#pragma once

#include <filesystem>
#include <string>

#include "platform/export.h"

namespace Embedded {

/// Drive or server and all folders included; the name as it is where it can be no file's. Unlike the standard library's
/// this leaves a server's name in its place.
FQCORE_API std::wstring fullNameOf(const std::filesystem::path& file);

} // namespace Embedded
