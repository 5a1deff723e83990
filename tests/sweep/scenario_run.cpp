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

Embedded::FaultPlan faultPlan(const std::optional<InjectedFault>& fault)
{
    Embedded::FaultPlan plan{.call = "", .occurrence = kNever, .code = {}, .limit = kMaximumCalls};
    if (!fault || !failsCalls(fault->kind))
        return plan;
    plan.occurrence = fault->place.first;
    plan.second = fault->place.second;
    plan.fromThenOn = fault->kind == FaultKind::fromThenOn;
    plan.throws = fault->kind == FaultKind::throwing;
    plan.code = fault->code;
    return plan;
}

std::size_t numberToFail(const std::optional<InjectedFault>& fault, FaultKind kind)
{
    return fault && fault->kind == kind ? fault->place.first : 0;
}

Outcome callAndCatch(Call& call, Fixture& fixture)
{
    try {
        return returning(call.make(fixture));
    } catch (const std::bad_alloc&) {
        return {Outcome::Kind::badAlloc};
    } catch (const ReactorException&) {
        return {Outcome::Kind::reactorException};
    } catch (...) { // the checks of the promises report it
        return {Outcome::Kind::otherException};
    }
}

void callAndCountAllocations(Call& call, Fixture& fixture, const std::optional<InjectedFault>& fault, ScenarioRun& run)
{
    const bool failsHost = fault && fault->kind == FaultKind::hostAllocation;
    const FaultKind kind = failsHost ? FaultKind::hostAllocation : FaultKind::allocation;
    const ScopedAllocations allocations(failsHost ? Allocator::host : Allocator::module, numberToFail(fault, kind));
    run.outcome = callAndCatch(call, fixture);
    run.allocations = ScopedAllocations::count(Allocator::module);
    run.hostAllocations = ScopedAllocations::count(Allocator::host);
}

/// Counts allocations only when no call fails, since it takes long to find out whose code allocates.
void callWithFault(Call& call, Fixture& fixture, const std::optional<InjectedFault>& fault, ScenarioRun& run)
{
    fixture.reactor().throwAt(numberToFail(fault, FaultKind::notice));
    const Embedded::ScopedFault armed(faultPlan(fault));
    if (fault && failsCalls(fault->kind))
        run.outcome = callAndCatch(call, fixture);
    else
        callAndCountAllocations(call, fixture, fault, run);
}

std::vector<std::string> failedCalls(const InjectedFault& fault, const std::vector<std::string>& calls)
{
    std::vector<std::string> failures;
    const auto add = [&](std::size_t place) {
        if (place != 0 && place <= calls.size())
            failures.push_back(calls[place - 1]);
    };
    add(fault.place.first);
    add(fault.place.second);
    if (fault.kind == FaultKind::fromThenOn) {
        for (std::size_t later = fault.place.first + 1; later <= calls.size(); ++later)
            add(later);
    }
    return failures;
}

std::size_t numberReached(const ScenarioRun& run, FaultKind kind)
{
    switch (kind) {
    case FaultKind::allocation:
        return run.allocations;
    case FaultKind::hostAllocation:
        return run.hostAllocations;
    case FaultKind::notice:
        return run.notices;
    default:
        return run.calls.size();
    }
}

std::vector<std::string> failuresDuring(const ScenarioRun& run, const InjectedFault& fault)
{
    if (failsCalls(fault.kind))
        return failedCalls(fault, run.calls);
    if (numberReached(run, fault.kind) < fault.place.first)
        return {};
    return {faultKindName(fault.kind)};
}

} // namespace

ScenarioRun runScenario(const Scenario& scenario, Fixture& fixture, const std::optional<InjectedFault>& fault)
{
    ScenarioRun run;
    const Embedded::ResourceCounts before = Embedded::ResourceCounters::now();
    {
        const std::unique_ptr<Call> call = scenario.call();
        callWithFault(*call, fixture, fault, run);
        call->expectOutParameters(run.outcome);
    }
    run.leaked = Embedded::ResourceCounters::difference(before, Embedded::ResourceCounters::now());
    run.calls = FaultInjection::seen();
    run.notices = fixture.reactor().notices();
    run.lastNotice = fixture.reactor().lastNotice();
    if (fault) {
        run.failures = failuresDuring(run, *fault);
        run.failedAsNotFound = !fault->code && std::ranges::any_of(run.failures, failsAsNotFound);
    }
    return run;
}

} // namespace Tests
