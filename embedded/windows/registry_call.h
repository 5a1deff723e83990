// How all calls of the registry begin and end.
#pragma once

#include <functional>
#include <new>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "embedded/diagnostics/fault_injection.h"
#include "platform/windows.h"

namespace Embedded {

/// Why a call stops, and the code that it answers. It never leaves the library.
struct RegistryFailure : std::runtime_error {
    explicit RegistryFailure(LSTATUS status, const std::string& message = {})
        : std::runtime_error(message), code(status)
    {
    }

    LSTATUS code;
};

/// Runs `work` and answers why it stopped, or nothing. What SQLite refuses becomes a RegistryFailure, and a damaged
/// file is closed, so that the next call sees whether it has been mended.
std::optional<RegistryFailure> registryFailureOf(const std::function<void()>& work);

/// The call's answer: the planned failure, why it stopped, or what `body` returns.
template <class Body>
LSTATUS registryCall(std::string_view call, LSTATUS plannedFailure, Body body)
{
    if (const auto fault = FaultInjection::injectedFailure(call, plannedFailure))
        return *fault;
    try {
        LSTATUS status = ERROR_SUCCESS;
        const auto failure = registryFailureOf([&] { status = body(); });
        return failure ? failure->code : status;
    } catch (const std::bad_alloc&) {
        return ERROR_OUTOFMEMORY;
    }
}

} // namespace Embedded
