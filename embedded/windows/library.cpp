#include "embedded/diagnostics/fault_injection.h"
#include "platform/windows.h"

// Nothing here sends thread notices, so there is nothing to switch off.
BOOL DisableThreadLibraryCalls(HMODULE module)
{
    if (const auto fault = Embedded::FaultInjection::injectedFailure("DisableThreadLibraryCalls", FALSE))
        return *fault;
    return module != nullptr ? TRUE : FALSE;
}
