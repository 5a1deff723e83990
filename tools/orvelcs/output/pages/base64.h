// Bytes as a text that a script of a page can read.
#pragma once

#include <string>
#include <string_view>

namespace Orvelcs {

std::string encodeBase64(std::string_view bytes);

} // namespace Orvelcs
