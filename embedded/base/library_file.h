// Which file of the process a piece of code came from.
#pragma once

#include <filesystem>

#include "platform/export.h"

namespace Embedded {

/// The file of the shared library or program that has this address in it; empty when there is none.
FQCORE_API std::filesystem::path libraryFileOf(const void* address);

} // namespace Embedded
