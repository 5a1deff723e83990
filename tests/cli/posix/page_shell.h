// Runs of commands as the pages of the documentation show them.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

#include "cli/program_run.h"

namespace Tests {

/// Runs a script that ends at the first command that fails. The program is in the search path, and the folder is the
/// user's home.
inline ProgramRun pageShell(const std::string& script, const std::filesystem::path& folder)
{
    const char* const folders = std::getenv("PATH");
    ProgramRun shell;
    shell.program = "/bin/bash"; // for pipefail
    shell.arguments = {"-euo", "pipefail", "-c", script};
    shell.environment = {{"PATH", std::filesystem::path(ORVELCS_PROGRAM).parent_path().string() + ":" +
                                      (folders != nullptr ? folders : "/usr/bin:/bin")},
                         {"HOME", folder.string()},
                         {"LC_ALL", "C.UTF-8"}};
    return shell;
}

} // namespace Tests
