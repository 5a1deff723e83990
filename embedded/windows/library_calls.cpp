#include "embedded/diagnostics/fault_injection.h"
#include "platform/win32.h"

// There are no thread notices off Windows, so there is nothing to disable.
BOOL DisableThreadLibraryCalls(HMODULE module)
{
    if (const auto fault = Embedded::FaultInjection::injectedFailure("DisableThreadLibraryCalls", FALSE))
        return *fault;
    return module != nullptr ? TRUE : FALSE;
}
