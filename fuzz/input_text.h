// Turns the input into text.
#pragma once

#include <string>
#include <string_view>

#include "embedded/base/text.h"
#include "fuzz/targets.h"

namespace Fuzz {

inline std::string_view viewOf(Input input)
{
    return {reinterpret_cast<const char*>(input.data()), input.size()};
}

/// Converts UTF-8 up to the first NUL.
inline std::wstring wideTextOf(Input input)
{
    return Embedded::wideFromUtf8(viewOf(input).substr(0, viewOf(input).find('\0')));
}

} // namespace Fuzz
