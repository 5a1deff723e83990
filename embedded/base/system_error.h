// What the system says about a call that failed.
#pragma once

#include <string>
#include <system_error>

#include "platform/export.h"

namespace Embedded {

/// Why the system refused: the sentence of the standard library where it has one for the same reason, so that a failure
/// is told in the same words on every system; in English, without a full stop.
FQCORE_API std::string systemMessage(const std::error_code& code);

inline std::string systemMessage(const std::system_error& failure)
{
    return systemMessage(failure.code());
}

/// The error of the last call of the system that failed on this thread: of errno, on Windows of GetLastError.
FQCORE_API std::error_code lastSystemError();

} // namespace Embedded
