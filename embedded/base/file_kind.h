// What a file name stands for.
#pragma once

#include <filesystem>

#include "embedded/base/error.h"
#include "platform/export.h"

namespace Embedded {

enum class FileKind { regular, folder, other };

/// Follows links. Opens nothing, since opening a pipe would wait for its writer. Returns the system's reason where
/// there is nothing with this name.
[[nodiscard]] FQCORE_API Expected<FileKind> fileKind(const std::filesystem::path& file);

} // namespace Embedded
