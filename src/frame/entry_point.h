// What the host looks for in the module: its API version and its entry point.
#pragma once

#include "coordsys/orvel_export.h"

extern "C" {

/// The host API version that the module was built for.
ORVEL_API int qerxGetApiVersion();

/// Takes the host's messages to the module: 1 after it was mapped, 2 before it is unmapped; others are passed over.
/// `appHandle` is the host's own handle of the module. Always returns 0.
ORVEL_API int qerxEntryPoint(int message, void* appHandle);
}
