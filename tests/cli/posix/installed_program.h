// Programs of Debian's packages that tests run beside this one.
#pragma once

#include <filesystem>
#include <string>

namespace Tests {

/// The path of a program of the package. Throws if it is not installed.
std::filesystem::path findProgram(const std::string& name, const std::string& package);

/// The path of a program that comes with PROJ.
inline std::filesystem::path findProjProgram(const std::string& name)
{
    return findProgram(name, "proj-bin");
}

} // namespace Tests
