// Files that a command writes its result into.
#pragma once

#include <string>
#include <string_view>

namespace Orvelcs {

/// The message for a file that must not be overwritten.
inline constexpr const char* kExists = "exists; --force overwrites it";

enum class OverwritingFiles { refused, allowed };

/// Writes the bytes into the file, whole or not at all. Throws Failure when that fails, and for a file that exists
/// unless overwriting is allowed.
void writeOutputFile(const std::string& file, std::string_view bytes, OverwritingFiles overwriting);

} // namespace Orvelcs
