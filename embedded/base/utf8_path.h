// File names from UTF-8.
#pragma once

#include <filesystem>
#include <string>

#include "platform/export.h"

namespace Embedded {

/// The standard library's own conversion would take each byte for a character on Windows. Elsewhere the name is the
/// bytes, whatever they are.
FQCORE_API std::filesystem::path pathFromUtf8(const std::string& name);

} // namespace Embedded
