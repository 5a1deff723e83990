// The file that stands for the registry of the current user, for the program that hosts the module. On Windows, where
// there is a registry, the file's name is that of a key in it instead, below
// HKEY_CURRENT_USER\Software\OrvelCoordsysCore, whose contents stand for the user's in this process.
#pragma once

#include <filesystem>
#include <string>

#include "platform/export.h"

namespace Embedded {

/// Which file the registry calls of this process use from now on; an empty path takes back the choice. Open keys stay
/// open and are then keys of the new file.
WIN32_STANDIN_API void useRegistryFile(const std::filesystem::path& file);
/// The file in use: the chosen one, or `orvel/registry.jsonl` in $XDG_CONFIG_HOME or in the home's `.config`. Empty
/// when there is neither; the registry is then empty and cannot be written to. On Windows only a chosen one.
WIN32_STANDIN_API std::filesystem::path registryFile();
/// Empty when the file can be read, or when there is none yet; otherwise the file, the line where there is one, and
/// what is wrong. With a file that is damaged, foreign or too new every call answers ERROR_REGISTRY_CORRUPT and leaves
/// it as it is.
[[nodiscard]] WIN32_STANDIN_API std::string checkRegistryFile();

} // namespace Embedded
