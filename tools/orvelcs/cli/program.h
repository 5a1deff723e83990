// orvelcs: the coordinate reference systems of drawings, on the command line.
#pragma once

#include "orvelcs/cli/exit_status.h"

namespace Orvelcs {

/// The whole program. The arguments, the program's name first, are UTF-8 on every system.
ExitStatus runProgram(int argumentCount, const char* const* arguments);

} // namespace Orvelcs
