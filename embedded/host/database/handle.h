// What a reader of drawing files throws when it meets a text that is no valid drawing. It does not leave this folder.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/host/error_status.h"

namespace Embedded {

struct DrawingRefusal {
    Qeapp::ErrorStatus status = Qeapp::eFileDamaged;
    std::string message; // begins with the place
};

/// An object's handle as people and messages write it: upper-case hexadecimal digits.
std::string hexFromHandle(std::uint64_t handle);
/// How a message about an object begins.
std::string placeOf(std::uint64_t handle);

/// A piece of a file as it may stand in a message: at most some forty characters, on one line, valid UTF-8.
std::string truncateForMessage(std::string_view utf8);

} // namespace Embedded
