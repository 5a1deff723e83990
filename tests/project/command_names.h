// What commands call by name: targets of the Makefile, presets of CMake, scripts.
#pragma once

#include <string>
#include <vector>

namespace Tests {

/// "make target NAME", "preset NAME" or "script PATH" for each name in the commands that the repository lacks.
std::vector<std::string> findUnknownNames(const std::string& commands);

} // namespace Tests
