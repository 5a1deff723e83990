// Bytes that are to be a text: UTF-8, with or without a byte-order mark.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Orvelcs {

std::string_view withoutByteOrderMark(std::string_view bytes);
/// What is wrong with the bytes, "is not UTF-8" for instance; nothing for a text that can be handed on whole.
std::optional<std::string> faultOfText(std::string_view utf8);

} // namespace Orvelcs
