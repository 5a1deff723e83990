// How every call of the registry begins and ends.
#pragma once

#include <functional>
#include <new>
#include <string>
#include <string_view>
#include <utility>

#include "embedded/base/error.h"
#include "embedded/diagnostics/fault_injection.h"
#include "platform/win32.h"

namespace Embedded {

/// Stops a call with the code that it returns. The message is for `checkRegistryFile`; it may be empty where that
/// function cannot meet the code.
[[noreturn]] inline void failRegistryCall(LSTATUS status, std::string message = {})
{
    throw ErrorException({status, std::move(message), {}});
}

/// Runs `work` and returns why it stopped, with the code of the registry calls as the status. Closes a damaged file, so
/// that the next call reads it again and sees whether it was repaired.
Expected<void> catchRegistryError(const std::function<void()>& work);

/// Returns the injected failure, the code that stops `body`, or what `body` returns.
template <class Body>
LSTATUS registryCall(std::string_view call, LSTATUS plannedFailure, Body body)
{
    if (const auto fault = FaultInjection::injectedFailure(call, plannedFailure))
        return *fault;
    try {
        LSTATUS status = ERROR_SUCCESS;
        const auto done = catchRegistryError([&] { status = body(); });
        return done ? status : done.error().status;
    } catch (const std::bad_alloc&) {
        return ERROR_OUTOFMEMORY;
    }
}

} // namespace Embedded
