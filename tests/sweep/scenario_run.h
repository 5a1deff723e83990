// One call on a stage, with one failure or without.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "sweep/injected_fault.h"
#include "sweep/scenario.h"

namespace Tests {

/// The failure that is planned, if any.
struct Strike {
    FaultKind kind = FaultKind::once;
    FaultPlace place{};
    std::optional<int> code{}; // a result of the sweep's choice instead of the call's own
};

/// What came of it.
struct Attempt {
    Outcome outcome;
    std::vector<std::string> calls;  // the fallible ones, in order
    std::size_t allocations = 0;     // the module's; counted where no call is made to fail
    std::size_t hostAllocations = 0; // the host's
    std::size_t notices = 0;
    std::vector<std::string> struck; // what was made to fail: calls by name, else by kind
    bool wasToldNotThere = false;    // by a call that failed with the answer that there is no such object
    std::string held;                // what is held beyond what was held before; empty when nothing
};

/// More fallible calls than any scenario comes near to: a loop that does not end.
inline constexpr std::size_t kMostCalls = 20000;

/// A strike at place 0 strikes nothing.
Attempt attempted(const Scenario& scenario, Stage& stage, const std::optional<Strike>& strike);

} // namespace Tests
