// The programs that come with PROJ.
#pragma once

#include <filesystem>
#include <string>

namespace Tests {

/// The path of the installed program. Throws if it is not installed.
std::filesystem::path findProjProgram(const std::string& name);

} // namespace Tests
