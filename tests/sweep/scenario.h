// One use of an exported function: the initial state, the call, and what the function promises. The sweep injects the
// failures.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "sweep/fixture.h"
#include "sweep/outcome.h"

namespace Tests {

/// One call with its own out-parameters, which the destructor releases.
class Call {
public:
    Call() = default;
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;
    virtual ~Call() = default;

    /// Makes the call and lets its exceptions pass. Allocates nothing itself.
    virtual int make(Fixture& fixture) = 0;
    /// Checks that the out-parameters are what the documentation says for this outcome. Most calls have none.
    virtual void expectOutParameters(const Outcome& /*outcome*/) const {}
};

/// The state in which a call may leave the drawing and the user's settings when it does not end as expected.
enum class Promise {
    readsOnly,        // unchanged, whatever the outcome
    allOrNothing,     // unchanged byte for byte; or complete, when an exception came afterwards
    formerOrNew,      // the same, but compared without handles
    removedOrNothing, // unchanged, or without a coordinate system
    partsMayRemain,   // any state in which the call can be made again
};

struct Scenario {
    std::string function;
    std::string name;
    std::function<InitialState()> initialState;
    std::function<std::unique_ptr<Call>()> call;
    Promise promise = Promise::readsOnly;
    int expected = 0;                 // the result when nothing fails
    bool canFail = true;              // whether the call makes a fallible call or an allocation
    bool survivesHostShortage = true; // whether the host's own allocations may fail
    bool catchesBadAlloc = false;     // whether the function lets no std::bad_alloc pass
};

inline std::string scenarioName(const Scenario& scenario)
{
    return scenario.function + ":" + scenario.name;
}

template <class OneCall, class... Arguments>
std::function<std::unique_ptr<Call>()> calling(Arguments... arguments)
{
    return [=] { return std::make_unique<OneCall>(arguments...); };
}

/// The scenarios of all subjects.
const std::vector<Scenario>& allScenarios();

using Scenarios = std::vector<Scenario>;
Scenarios readingScenarios();
Scenarios assigningScenarios();
Scenarios clearingScenarios();
Scenarios blockScenarios();
Scenarios storageVersionScenarios();
Scenarios reactorListScenarios();
Scenarios configurationScenarios();
Scenarios lookUpScenarios();
Scenarios itemScenarios();
Scenarios frameScenarios();
Scenarios savingScenarios();

} // namespace Tests
