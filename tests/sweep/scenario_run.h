// Runs the call of a scenario once, with or without an injected fault.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "sweep/injected_fault.h"
#include "sweep/scenario.h"

namespace Tests {

/// What is observed during one run.
struct ScenarioRun {
    Outcome outcome;
    std::vector<std::string> calls;  // the fallible calls of the platform, in order
    std::size_t allocations = 0;     // by the module; counted only when no call fails
    std::size_t hostAllocations = 0; // by the host; counted only when no call fails
    std::size_t notices = 0;         // to the reactor
    LastNotice lastNotice = LastNotice::none;
    std::vector<std::string> failures; // what failed: names of calls, or else the name of the fault kind
    bool failedAsNotFound = false;     // a call failed by reporting that there is no such object
    std::string leaked;                // what is held after the run but not before; empty for nothing
};

/// More fallible calls than any scenario makes. A run that makes more of them loops without end.
inline constexpr std::size_t kMaximumCalls = 20000;

ScenarioRun runScenario(const Scenario& scenario, Fixture& fixture, const std::optional<InjectedFault>& fault);

} // namespace Tests
