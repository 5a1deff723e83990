// Points that PROJ carries over by itself, without anything of this project.
#pragma once

#include <filesystem>
#include <string>

namespace Tests {

/// A line of three numbers for each of those given, through the operation of that code. Runs, where it runs a program,
/// in the folder. Throws when PROJ cannot do it.
std::string carriedOverByProj(const std::string& code, bool isInverse, const std::string& points,
                              const std::filesystem::path& folder);

} // namespace Tests
