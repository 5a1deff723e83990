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

    /// Fails the running test for each point at which a promise is broken. Returns the number of points.
    std::size_t run(FaultKind kind);

private:
    std::vector<FaultPlace> placesOf(FaultKind kind);
    bool hostMayRunShort() const;
    std::vector<FaultPlace> placesToThrow() const;
    std::vector<FaultPlace> pairs();
    Strike strikeAt(FaultKind kind, const FaultPlace& place) const;
    void runPoint(FaultKind kind, const FaultPlace& place);

    const Scenario& scenario_;
    TemporaryFolder folder_;
    Setting setting_;
    Reference reference_;
};

} // namespace Tests
