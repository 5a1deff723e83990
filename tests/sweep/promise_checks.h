// Checks that a call in which something failed kept every promise.
#pragma once

#include "sweep/scenario_run.h"

namespace Tests {

/// The same call when nothing fails. Later runs are compared with it.
struct Baseline {
    ScenarioRun run;
    StoredState before;
    StoredState after;
};

/// Adds a failure to the current test for each broken promise.
void expectPromisesKept(const Scenario& scenario, const Baseline& baseline, const Fixture& fixture,
                        const ScenarioRun& run);

/// Makes the call again on the same fixture with nothing failing, and checks that it succeeds. Unless `run` succeeded,
/// the call must also have the same effect as the baseline.
void expectSuccessAfterwards(const Scenario& scenario, const Baseline& baseline, const ScenarioRun& run,
                             Fixture& fixture);

} // namespace Tests
