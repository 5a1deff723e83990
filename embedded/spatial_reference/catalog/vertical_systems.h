// The catalog's vertical systems, which this library does not have.
#pragma once

#include <string_view>

#include "platform/export.h"

namespace Embedded {

/// The words for such a system in messages.
inline constexpr const char* kVerticalSystem = "a vertical system, which a drawing cannot have";

/// Returns whether PROJ's database has a vertical system with the code.
ZSR_API bool isVerticalSystem(std::wstring_view code);

} // namespace Embedded
