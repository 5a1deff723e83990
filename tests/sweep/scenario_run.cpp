#include "sweep/scenario_run.h"

#include <algorithm>
#include <limits>
#include <new>

#include "embedded/diagnostics/fault_injection.h"
#include "embedded/diagnostics/resource_counters.h"
#include "sweep/allocations.h"
#include "sweep/platform_calls.h"

namespace Tests {
namespace {

using Embedded::FaultInjection;

constexpr std::size_t kNever = std::numeric_limits<std::size_t>::max();

bool isOfCalls(FaultKind kind)
{
    return kind != FaultKind::allocation && kind != FaultKind::hostAllocation && kind != FaultKind::notice;
}

Embedded::FaultPlan planOf(const std::optional<Strike>& strike)
{
    Embedded::FaultPlan plan{.call = "", .occurrence = kNever, .code = {}, .limit = kMostCalls};
    if (!strike || !isOfCalls(strike->kind))
        return plan;
    plan.occurrence = strike->place.first;
    plan.second = strike->place.second;
    plan.fromThenOn = strike->kind == FaultKind::fromThenOn;
    plan.throws = strike->kind == FaultKind::throwing;
    plan.code = strike->code;
    return plan;
}

std::size_t placeIn(const std::optional<Strike>& strike, FaultKind kind)
{
    return strike && strike->kind == kind ? strike->place.first : 0;
}

Outcome outcomeOf(Call& call, Stage& stage)
{
    try {
        return returning(call.make(stage));
    } catch (const std::bad_alloc&) {
        return {Outcome::Way::outOfMemory};
    } catch (const ReactorRefused&) {
        return {Outcome::Way::refusedByReactor};
    } catch (...) { // told as such
        return {Outcome::Way::otherwise};
    }
}

void makeCountingAllocations(Call& call, Stage& stage, const std::optional<Strike>& strike, Attempt& attempt)
{
    const bool ofHost = strike && strike->kind == FaultKind::hostAllocation;
    const ScopedAllocations allocations(ofHost ? Allocator::host : Allocator::module,
                                        placeIn(strike, ofHost ? FaultKind::hostAllocation : FaultKind::allocation));
    attempt.outcome = outcomeOf(call, stage);
    attempt.allocations = ScopedAllocations::count(Allocator::module);
    attempt.hostAllocations = ScopedAllocations::count(Allocator::host);
}

/// Allocations are counted where they matter: telling whose they are takes time.
void make(Call& call, Stage& stage, const std::optional<Strike>& strike, Attempt& attempt)
{
    stage.reactor().throwAt(placeIn(strike, FaultKind::notice));
    const Embedded::ScopedFault fault(planOf(strike));
    if (strike && isOfCalls(strike->kind))
        attempt.outcome = outcomeOf(call, stage);
    else
        makeCountingAllocations(call, stage, strike, attempt);
}

std::vector<std::string> struckCalls(const Strike& strike, const std::vector<std::string>& calls)
{
    std::vector<std::string> struck;
    const auto add = [&](std::size_t place) {
        if (place != 0 && place <= calls.size())
            struck.push_back(calls[place - 1]);
    };
    add(strike.place.first);
    add(strike.place.second);
    if (strike.kind == FaultKind::fromThenOn) {
        for (std::size_t later = strike.place.first + 1; later <= calls.size(); ++later)
            add(later);
    }
    return struck;
}

std::size_t reached(const Attempt& attempt, FaultKind kind)
{
    switch (kind) {
    case FaultKind::allocation:
        return attempt.allocations;
    case FaultKind::hostAllocation:
        return attempt.hostAllocations;
    case FaultKind::notice:
        return attempt.notices;
    default:
        return attempt.calls.size();
    }
}

std::vector<std::string> struckIn(const Attempt& attempt, const Strike& strike)
{
    if (isOfCalls(strike.kind))
        return struckCalls(strike, attempt.calls);
    if (reached(attempt, strike.kind) < strike.place.first)
        return {};
    return {nameOf(strike.kind)};
}

} // namespace

Attempt attempted(const Scenario& scenario, Stage& stage, const std::optional<Strike>& strike)
{
    Attempt attempt;
    const Embedded::ResourceCounts before = Embedded::ResourceCounters::now();
    {
        const std::unique_ptr<Call> call = scenario.call();
        make(*call, stage, strike, attempt);
        call->expectOutParameters(attempt.outcome);
    }
    attempt.held = Embedded::ResourceCounters::difference(before, Embedded::ResourceCounters::now());
    attempt.calls = FaultInjection::seen();
    attempt.notices = stage.reactor().heard();
    if (strike) {
        attempt.struck = struckIn(attempt, *strike);
        attempt.wasToldNotThere = !strike->code && std::ranges::any_of(attempt.struck, failsAsNotThere);
    }
    return attempt;
}

} // namespace Tests
