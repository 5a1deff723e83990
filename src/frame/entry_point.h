// The functions that the host calls in the module: its API version and its entry point.
#pragma once

#include "coordsys/orvel_export.h"

extern "C" {

/// The host API version that the module is built for.
ORVEL_API int qerxGetApiVersion();

/// Handles the host's messages to the module: 1 after the module is mapped, 2 before it is unmapped. Ignores others.
/// `appHandle` is the host's handle of the module. Always returns 0.
ORVEL_API int qerxEntryPoint(int message, void* appHandle);
}
