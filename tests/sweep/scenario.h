// One use of an exported function: what the call is made on, the call, and what is promised of it. How its failures are
// brought about is the sweep's business alone.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "sweep/fixture.h"
#include "sweep/outcome.h"

namespace Tests {

/// One call with out-parameters of its own, which its destructor gives back.
class Call {
public:
    Call() = default;
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;
    virtual ~Call() = default;

    /// Makes the call; what it throws passes through. Allocates nothing of its own.
    virtual int make(Stage& stage) = 0;
    /// Whether the out-parameters are what the documentation says for this outcome.
    virtual void expectOutParameters(const Outcome& outcome) const { static_cast<void>(outcome); } // most have none
};

/// What a call that does not come to its expected end may leave of the drawing and the user's settings.
enum class Promise {
    readsOnly,        // as it was, whatever the outcome
    allOrNothing,     // byte for byte as it was; or all done, where an exception came afterwards
    formerOrNew,      // the same of what is stored, though not of how
    removedOrNothing, // as it was, or without a coordinate system
    partsMayRemain,   // nothing but that the call can be made again
};

struct Scenario {
    std::string function;
    std::string name;
    std::function<Setting()> setting;
    std::function<std::unique_ptr<Call>()> call;
    Promise promise = Promise::readsOnly;
    int expected = 0;                 // the result when nothing is made to fail
    bool canFail = true;              // whether it makes a fallible call or an allocation
    bool survivesHostShortage = true; // the host's own allocations can be failed
    bool answersOutOfMemory = false;  // it lets no std::bad_alloc pass
};

inline std::string nameOf(const Scenario& scenario)
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
