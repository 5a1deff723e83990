// Errors about coordinate operations as the program reports them.
#pragma once

#include "embedded/base/error.h"
#include "orvelcs/cli/failure.h"

namespace Orvelcs {

/// With the nearest codes for an unknown one, for which the command ends with `unknownCode`.
Failure failureOf(const Embedded::Error& error, ExitStatus unknownCode);

} // namespace Orvelcs
