// The name of one point of the sweep, by which it can be run again.
#pragma once

#include <optional>
#include <string>

#include "sweep/injected_fault.h"
#include "sweep/scenario.h"

namespace Tests {

/// function:scenario:kind:n, of a pair function:scenario:pair:i,j
std::string pointName(const Scenario& scenario, FaultKind kind, const FaultPlace& place);

/// Whether this process is to run the one point of ORVEL_SWEEP_POINT alone.
bool isReplaying();

/// The place to be run again when that point is of this scenario and kind.
std::optional<FaultPlace> placeToReplay(const Scenario& scenario, FaultKind kind);

} // namespace Tests
