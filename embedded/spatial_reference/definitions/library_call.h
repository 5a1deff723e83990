// How the library's calls begin and end: a chance for a planned fault, and no foreign exception on the way out.
#pragma once

#include <nlohmann/json.hpp>

#include <optional>
#include <string_view>

#include "embedded/diagnostics/fault_injection.h"
#include "platform/spatial_reference/status.h"

namespace Embedded {

using Zentara::Infrastructure::SpatialReference::Status;

/// The status to fail with when the call is to fail.
inline std::optional<Status> injectedStatus(std::string_view call,
                                            Status failure = Zentara::Infrastructure::SpatialReference::statusFailed)
{
    const auto code = FaultInjection::injectedFailure(call, failure);
    return code ? std::optional(static_cast<Status>(*code)) : std::nullopt;
}

/// Runs the rest of a call; what the JSON library throws becomes `failure`. Failed allocations pass through.
template <typename Body>
Status guarded(Status failure, Body&& body)
{
    try {
        return body();
    } catch (const nlohmann::json::exception&) {
        return failure;
    }
}

} // namespace Embedded
