// Turns the input into text.
#pragma once

#include <string>
#include <string_view>

#include "embedded/base/text.h"
#include "fuzz/targets.h"

namespace Fuzz {

inline std::string_view asText(Input input)
{
    return {reinterpret_cast<const char*>(input.data()), input.size()};
}

/// Converts UTF-8 up to the first NUL.
inline std::wstring decodeText(Input input)
{
    return Embedded::wideFromUtf8(asText(input).substr(0, asText(input).find('\0')));
}

} // namespace Fuzz
