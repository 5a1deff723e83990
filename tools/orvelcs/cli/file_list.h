// A list of file names, as find and other programs write it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Orvelcs {

enum class NameEnd { line, nul };

/// The names in the order given, whatever bytes they hold. Empty names are left out. Lines may end with CR and LF, and
/// the first may begin with a byte-order mark; names that end with NUL are taken as they are.
std::vector<std::string> splitFileList(std::string_view list, NameEnd end);

} // namespace Orvelcs
