// Runs a scenario once for each place where something can fail.
#pragma once

#include <cstddef>
#include <vector>

#include "sweep/point.h"
#include "sweep/promise_checks.h"

namespace Tests {

class Sweep {
public:
    explicit Sweep(const Scenario& scenario);

    /// Fails the current test at each point at which a promise is broken. Returns the number of points.
    std::size_t run(FaultKind kind);

private:
    std::vector<FaultPlace> placesFor(FaultKind kind);
    bool hostAllocationsMayFail() const;
    std::vector<FaultPlace> placesThatMayThrow() const;
    std::vector<FaultPlace> pairs();
    InjectedFault faultAt(FaultKind kind, const FaultPlace& place) const;
    void runPoint(FaultKind kind, const FaultPlace& place);

    const Scenario& scenario_;
    TemporaryFolder folder_;
    InitialState initialState_;
    Baseline baseline_;
};

} // namespace Tests
