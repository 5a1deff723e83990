// The file that holds the registry of the current user, as the program that hosts the module chooses it. On Windows the
// name is that of a key below HKEY_CURRENT_USER\Software\OrvelCoordsysCore, which replaces HKEY_CURRENT_USER in this
// process.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>

#include "embedded/base/error.h"
#include "platform/export.h"

namespace Embedded {

/// Makes the registry calls of this process use this file; an empty path undoes the choice. Open keys stay open and are
/// then keys of the new file.
WIN32_STANDIN_API void useRegistryFile(const std::filesystem::path& file);
/// The file in use: the chosen one, or `orvel/registry.db` in $XDG_CONFIG_HOME or in `.config` of the home folder.
/// Without either the path is empty, and so is the registry, which cannot be written to. On Windows only the chosen
/// file.
WIN32_STANDIN_API std::filesystem::path registryFile();
/// Reads the whole file. Returns the code of the registry calls, what is wrong and the file's name; a missing file is
/// no error. When the file is damaged, foreign or too new, every registry call returns ERROR_REGISTRY_CORRUPT and
/// leaves the file as it is.
[[nodiscard]] WIN32_STANDIN_API Expected<void> checkRegistryFile();
/// Sets how long a call waits for another process that changes the file, by default 10 seconds, and what it calls while
/// it waits. After that time the call returns ERROR_REGISTRY_IO_FAILED. On Windows no call waits.
WIN32_STANDIN_API void setRegistryWait(std::chrono::milliseconds longest,
                                       std::function<void(std::chrono::milliseconds waited)> onPause = {});

} // namespace Embedded
