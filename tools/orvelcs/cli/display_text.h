// Text for a terminal: valid UTF-8 on one line, whatever a file name or a drawing holds.
#pragma once

#include <string>
#include <string_view>

namespace Orvelcs {

/// Escapes control characters (\n, \t, \x1B) and bytes that are not UTF-8 (\xFF).
std::string oneLine(std::string_view utf8);
std::string oneLine(std::wstring_view text);

} // namespace Orvelcs
