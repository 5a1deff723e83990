// Reading a whole file, up to a limit.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "embedded/host/file_result.h"

namespace Embedded {

/// On eOk `text` holds the file; otherwise it is empty: eFileNotFound for a file that cannot be opened, eFileDamaged
/// for what is no regular file or cannot be read to its end, eFileTooLarge without having read anything. The message
/// gives the reason and leaves the file's name to the caller.
FileResult readWholeFile(const std::filesystem::path& file, std::uint64_t mostBytes, std::string& text);

} // namespace Embedded
