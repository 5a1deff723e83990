// What the system says about a call that failed.
#pragma once

#include <windows.h>

#include <string>

#include "platform/export.h"

namespace Embedded {

/// ERROR_DIRECTORY_NOT_SUPPORTED, for which mingw-w64 has no name.
inline constexpr DWORD kErrorIsFolder = 336;

/// Why the system refused, for an error number of its own: the sentence of the standard library where it has one for
/// the same reason, so that a failure is told in the same words on every system; in English, without a full stop.
FQCORE_API std::string systemMessage(DWORD error);

} // namespace Embedded
