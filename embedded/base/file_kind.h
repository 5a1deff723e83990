// Finds out whether a name belongs to a regular file, a folder, or something else, such as a pipe.
#pragma once

#include <filesystem>

#include "embedded/base/error.h"
#include "platform/export.h"

namespace Embedded {

enum class FileKind { regular, folder, pipe, device, other };

/// Follows links. Opens nothing, since opening a pipe would wait for its writer. Returns the system's reason where
/// there is nothing with this name.
[[nodiscard]] FQCORE_API Expected<FileKind> fileKind(const std::filesystem::path& file);

/// The message for what cannot be read as a file: "is a pipe, not a regular file".
[[nodiscard]] FQCORE_API const char* notRegularMessage(FileKind kind);

} // namespace Embedded
