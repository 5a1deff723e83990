// The number of an object in its drawing.
#pragma once

#include <cstdint>
#include <string>

#include "platform/host/error_status.h"

namespace Embedded {

/// What a reader of drawing files throws when it meets what is no valid drawing.
struct DrawingRefusal {
    Qeapp::ErrorStatus status = Qeapp::eFileDamaged;
    std::string message; // begins with the place
};

using Handle = std::uint64_t; // 0 for none

/// A handle as people and messages write it: upper-case hexadecimal digits.
std::string hexFromHandle(Handle handle);
/// How a message about an object begins.
std::string placeOf(Handle handle);

} // namespace Embedded
