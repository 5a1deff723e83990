// The name of one point of the sweep, which runs the point again.
#pragma once

#include <optional>
#include <string>

#include "sweep/injected_fault.h"
#include "sweep/scenario.h"

namespace Tests {

/// "function:scenario:kind:n", or for a pair "function:scenario:pair:i,j".
std::string pointName(const Scenario& scenario, FaultKind kind, const FaultPlace& place);

/// Whether ORVEL_SWEEP_POINT names the one point that this process runs.
bool isReplaying();

/// The place of that point if it belongs to this scenario and kind.
std::optional<FaultPlace> placeToReplay(const Scenario& scenario, FaultKind kind);

} // namespace Tests
