// The programs that come with PROJ.
#pragma once

#include <filesystem>
#include <string>

namespace Tests {

/// Where it is installed. Throws when it is not.
std::filesystem::path programOfProj(const std::string& name);

} // namespace Tests
