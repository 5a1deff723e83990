// File names as the system's own calls take them.
#pragma once

#include <filesystem>

#include "platform/export.h"

namespace Embedded {

/// The same file by a name that the system's calls take however long it is: on Windows its full name, with the prefix
/// that lifts the limit of 260 characters; elsewhere the name as it is.
FQCORE_API std::filesystem::path systemPath(const std::filesystem::path& file);

} // namespace Embedded
