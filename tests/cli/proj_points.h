// Transforms points by PROJ, without the code of this project.
#pragma once

#include <filesystem>
#include <string>

namespace Tests {

/// Transforms points, which are lines of three numbers, by the operation with that code. A program of PROJ runs in the
/// folder. Throws if PROJ cannot transform them.
std::string transformByProj(const std::string& code, bool isInverse, const std::string& points,
                            const std::filesystem::path& folder);

} // namespace Tests
