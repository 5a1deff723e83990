// How a file operation ended.
#pragma once

#include <string>

#include "embedded/base/path.h"
#include "platform/host/error_status.h"

namespace Embedded {

/// eOk, or the code with a message that names the place.
struct [[nodiscard]] FileResult {
    Qeapp::ErrorStatus status = Qeapp::eOk;
    std::string message;
};

} // namespace Embedded
