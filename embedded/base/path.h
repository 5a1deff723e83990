// File names: as UTF-8, in messages, and as the system's calls take them.
#pragma once

#include <filesystem>
#include <string>

#include "platform/export.h"

namespace Embedded {

/// Off Windows the name is the bytes, valid UTF-8 or not. On Windows the standard library's own conversion would take
/// each byte for a character.
FQCORE_API std::filesystem::path pathFromUtf8(const std::string& name);

/// The name as it may stand in a message: valid UTF-8, whatever bytes the name has.
FQCORE_API std::string displayName(const std::filesystem::path& file);

/// The name with all its folders. On Windows it begins with the drive or the server; a name that no file can have
/// stays as it is.
FQCORE_API std::filesystem::path fullPath(const std::filesystem::path& file);

/// A name of the same file that the system's calls accept at any length: on Windows the full path behind the prefix
/// that lifts the limit of 260 characters, elsewhere the name as it is.
FQCORE_API std::filesystem::path systemPath(const std::filesystem::path& file);

} // namespace Embedded
