// What a file name stands for.
#pragma once

#include <filesystem>
#include <string>

#include "platform/export.h"

namespace Embedded {

enum class FileKind { nothing, regular, folder, other };

struct FileLookUp {
    FileKind kind = FileKind::nothing;
    std::string reason; // why there is nothing
};

/// Nothing is opened: opening a pipe would wait for its writer.
[[nodiscard]] FQCORE_API FileLookUp lookUpFile(const std::filesystem::path& file);

} // namespace Embedded
