// The catalog's vertical systems, which this library does not have.
#pragma once

#include <string_view>

#include "platform/export.h"

namespace Embedded {

/// Returns whether PROJ's database has a vertical system with the code.
ZSR_API bool isVerticalSystem(std::wstring_view code);

} // namespace Embedded
