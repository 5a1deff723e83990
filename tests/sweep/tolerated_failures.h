// Lists the failures that change no result, with the reasons. A call must report every other failure.
#pragma once

#include <optional>
#include <string>

#include "sweep/scenario.h"

namespace Tests {

/// Why the call of the scenario may succeed although `failure` happened: the name of a platform call, or "allocation",
/// "hostAllocation" or "notice".
std::optional<std::string> reasonToTolerate(const Scenario& scenario, const std::string& failure);

} // namespace Tests
