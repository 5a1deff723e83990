// Whether a call with a failure in it kept every promise.
#pragma once

#include "sweep/scenario_run.h"

namespace Tests {

/// The same call when nothing fails: what later ones are measured by.
struct Reference {
    Attempt attempt;
    Stored before;
    Stored after;
};

/// Adds a failure to the running test for each promise that was broken.
void expectPromisesKept(const Scenario& scenario, const Reference& reference, const Stage& stage,
                        const Attempt& attempt);

/// That the call, made again on the same stage with nothing failing, does all that it did for the reference. After one
/// that passed a failure over, that it ends well.
void expectSuccessAfterwards(const Scenario& scenario, const Reference& reference, const Attempt& attempt,
                             Stage& stage);

} // namespace Tests
