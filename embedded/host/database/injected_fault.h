// Fault injection in the calls of the host.
#pragma once

#include <optional>
#include <string_view>

#include "embedded/diagnostics/fault_injection.h"
#include "platform/host/error_status.h"

namespace QeHost {

/// The status that the call must return at once, if a fault is injected into it.
inline std::optional<Qeapp::ErrorStatus> injectedFault(std::string_view call,
                                                       Qeapp::ErrorStatus failure = Qeapp::eOutOfMemory)
{
    const std::optional<int> code = Embedded::FaultInjection::injectedFailure(call, failure);
    if (!code)
        return std::nullopt;
    return static_cast<Qeapp::ErrorStatus>(*code);
}

/// The same for calls that have no status to return.
inline bool isFaultInjected(std::string_view call)
{
    return injectedFault(call).has_value();
}

} // namespace QeHost
