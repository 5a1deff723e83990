// What stops a registry call.
#pragma once

#include <string>

#include "platform/windows.h"

namespace Embedded {

/// Thrown from step to step and answered by the call; it never leaves the library.
struct RegistryFailure {
    LSTATUS code;
    std::string message;
};

} // namespace Embedded
