// How the calls of the library begin and end: they may fail on request, and the JSON library's exceptions become a
// status.
#pragma once

#include <nlohmann/json.hpp>

#include <optional>
#include <string_view>

#include "embedded/base/error.h"
#include "embedded/diagnostics/fault_injection.h"
#include "embedded/spatial_reference/definitions/library_object.h"
#include "platform/spatial_reference/status.h"

namespace Embedded {

using Zentara::Infrastructure::SpatialReference::Status;

/// The status with which the call must fail; nothing when no failure is injected into it.
inline std::optional<Status> injectedStatus(std::string_view call,
                                            Status failure = Zentara::Infrastructure::SpatialReference::statusFailed)
{
    const auto code = FaultInjection::injectedFailure(call, failure);
    return code ? std::optional(static_cast<Status>(*code)) : std::nullopt;
}

/// The status that `body` returns, or `failure` for an exception of the JSON library. Failed allocations pass through.
template <typename Body>
Status catchJsonErrors(Status failure, Body&& body)
{
    try {
        return body();
    } catch (const nlohmann::json::exception&) {
        return failure;
    }
}

inline Status statusOf(const Error& error)
{
    return static_cast<Status>(error.status);
}

/// Makes a definition of the data that `load` returns. The definition stays as it was when there is none.
template <typename Definition, typename Load>
Status loadDefinition(Definition*& definition, const Load& load)
{
    return catchJsonErrors(Zentara::Infrastructure::SpatialReference::statusFailed, [&] {
        Expected<DefinitionData> data = load();
        if (!data)
            return statusOf(data.error());
        definition = makeObject<Definition>(*std::move(data));
        return Zentara::Infrastructure::SpatialReference::statusOk;
    });
}

} // namespace Embedded
