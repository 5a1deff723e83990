// The options for the place of the user's configuration.
#pragma once

#include <string>

#include <CLI/App.hpp>

namespace Orvelcs {

/// The environment variable from which the module takes the folder of the user's settings file.
inline constexpr const char* kUserFolderVariable = "VORLEN_USER_DICTIONARY_PATH";

/// --user-dir and --registry.
struct UserOptions {
    std::string folder;
    CLI::Option* folderOption = nullptr;
    std::string registry;
    CLI::Option* registryOption = nullptr;
};

void addUserOptions(CLI::App& program, UserOptions& options);
/// Sets both for this process, before the module is loaded. Throws Failure for a folder that the module would ignore.
void applyUserOptions(const UserOptions& options);

} // namespace Orvelcs
