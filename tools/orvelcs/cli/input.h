// Reading a file or standard input to its end.
#pragma once

#include <cstddef>
#include <string>

namespace Orvelcs {

/// The name that stands for standard input or output where a file is expected.
inline constexpr const char* kStandardStream = "-";

/// Everything up to the end of the file, or of standard input for "-". Throws Failure when it cannot be read or is
/// longer than `limitInBytes` (0: no limit).
std::string readWhole(const std::string& file, std::size_t limitInBytes = 0);

} // namespace Orvelcs
