// Text for a person's terminal: valid UTF-8 on one line, whatever a file name or a drawing holds.
#pragma once

#include <string>
#include <string_view>

namespace Orvelcs {

/// Control characters are spelt out (\n, \t, \x1B), invalid sequences become U+FFFD.
std::string oneLine(std::string_view utf8);
std::string oneLine(std::wstring_view text);

} // namespace Orvelcs
