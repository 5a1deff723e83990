// The file that stands for the registry of the current user, for the program that hosts the module. On Windows, where
// there is a registry, the file's name is that of a key in it instead, below
// HKEY_CURRENT_USER\Software\OrvelCoordsysCore, whose contents stand for the user's in this process.
#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>

#include "platform/export.h"

namespace Embedded {

/// Which file the registry calls of this process use from now on; an empty path takes back the choice. Open keys stay
/// open and are then keys of the new file.
WIN32_STANDIN_API void useRegistryFile(const std::filesystem::path& file);
/// The file in use: the chosen one, or `orvel/registry.db` in $XDG_CONFIG_HOME or in the home's `.config`. Empty
/// when there is neither; the registry is then empty and cannot be written to. On Windows only a chosen one.
WIN32_STANDIN_API std::filesystem::path registryFile();
/// Reads all of the file. Empty when it is well, or when there is none yet; otherwise its name and what is wrong. With
/// a file that is damaged, foreign or too new every call answers ERROR_REGISTRY_CORRUPT and leaves it as it is.
[[nodiscard]] WIN32_STANDIN_API std::string checkRegistryFile();
/// How long a call waits for another process that changes the file, 10 seconds unless set, and what is called while it
/// waits. After that it answers ERROR_REGISTRY_IO_FAILED. On Windows no call waits.
WIN32_STANDIN_API void setRegistryWait(std::chrono::milliseconds most,
                                       std::function<void(std::chrono::milliseconds waited)> waiting = {});

} // namespace Embedded
