#include "sweep/promise_checks.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "sweep/documented_results.h"
#include "sweep/platform_calls.h"
#include "sweep/tolerated_failures.h"

namespace Tests {
namespace {

bool anyFailed(const ScenarioRun& run, const std::function<bool(const std::string&)>& is)
{
    return std::ranges::any_of(run.failures, is);
}

/// std::bad_alloc is allowed only when a call threw it or an allocation failed.
bool mayEndInBadAlloc(const Scenario& scenario, const ScenarioRun& run)
{
    if (scenario.catchesBadAlloc)
        return false;
    return anyFailed(run, [](const std::string& call) {
        return call == "allocation" || call == "hostAllocation" || throwsOnFailure(call) || mayThrow(call);
    });
}

void expectAllowedException(const Scenario& scenario, const ScenarioRun& run)
{
    switch (run.outcome.kind) {
    case Outcome::Kind::returned:
        return;
    case Outcome::Kind::badAlloc:
        EXPECT_TRUE(mayEndInBadAlloc(scenario, run)) << "std::bad_alloc";
        return;
    case Outcome::Kind::reactorException:
        EXPECT_EQ(run.failures, std::vector<std::string>{"notice"});
        return;
    case Outcome::Kind::otherException:
        ADD_FAILURE() << "an exception that nothing in the scenario throws";
    }
}

void expectDocumentedResult(const Scenario& scenario, const ScenarioRun& run)
{
    if (!run.outcome.returned())
        return;
    const int result = run.outcome.result;
    EXPECT_TRUE(isDocumented(scenario.function, result) || isHostsOwnFailure(result))
        << "undocumented result " << result;
}

/// A call may succeed only when every failure in it is tolerated.
void expectFailuresReported(const Scenario& scenario, const ScenarioRun& run)
{
    if (run.outcome != returning(0))
        return;
    for (const std::string& call : run.failures)
        EXPECT_TRUE(reasonToTolerate(scenario, call)) << "the call succeeded although this failed: " << call;
}

using Same = bool (*)(const StoredState&, const StoredState&);

bool isEqual(const StoredState& left, const StoredState& right)
{
    return left == right;
}

/// The change is complete after a success and absent after a failure. After an exception it may be either, since a
/// reactor may have thrown when it heard of the completed change.
bool isAllOrNothing(const Baseline& baseline, const Outcome& outcome, const StoredState& now, Same same)
{
    if (outcome == returning(0) || same(now, baseline.before))
        return true;
    return !outcome.returned() && same(now, baseline.after);
}

bool isAllowedState(const Scenario& scenario, const Baseline& baseline, const Fixture& fixture, const ScenarioRun& run,
                    const StoredState& now)
{
    switch (scenario.promise) {
    case Promise::readsOnly:
        return now == baseline.before;
    case Promise::allOrNothing:
        return isAllOrNothing(baseline, run.outcome, now, isEqual);
    case Promise::formerOrNew:
        return run.failedAsNotFound || isAllOrNothing(baseline, run.outcome, now, haveSameContents);
    case Promise::removedOrNothing:
        return now == baseline.before || now == baseline.after || fixture.hasNoSystem();
    case Promise::partsMayRemain:
        return true;
    }
    return false;
}

/// When a call fails, the last notice to the reactor says what the drawing holds. Only when the module itself runs out
/// of memory may a notice be missing, since sending it allocates.
void expectNoticesMatchState(const Baseline& baseline, const Fixture& fixture, const ScenarioRun& run,
                             const StoredState& now)
{
    if (run.outcome == returning(0) || run.failures == std::vector<std::string>{"allocation"})
        return;
    if (run.lastNotice == LastNotice::removed) {
        EXPECT_TRUE(fixture.hasNoSystem()) << "the reactor heard of a removal";
        return;
    }
    const bool isAssigned = run.lastNotice == LastNotice::assigned;
    EXPECT_TRUE(now == (isAssigned ? baseline.after : baseline.before))
        << "the reactor heard of " << (isAssigned ? "an assignment" : "no change");
}

void expectPromisedState(const Scenario& scenario, const Baseline& baseline, const Fixture& fixture,
                         const ScenarioRun& run)
{
    const StoredState now = fixture.storedState();
    EXPECT_TRUE(isAllowedState(scenario, baseline, fixture, run, now)) << describeDifference(now, baseline.before);
    if (scenario.promise == Promise::allOrNothing || scenario.promise == Promise::removedOrNothing)
        expectNoticesMatchState(baseline, fixture, run, now);
}

} // namespace

void expectPromisesKept(const Scenario& scenario, const Baseline& baseline, const Fixture& fixture,
                        const ScenarioRun& run)
{
    EXPECT_FALSE(run.failures.empty()) << "nothing failed";
    EXPECT_EQ(run.leaked, "") << "held after the call";
    expectAllowedException(scenario, run);
    expectDocumentedResult(scenario, run);
    expectFailuresReported(scenario, run);
    expectPromisedState(scenario, baseline, fixture, run);
}

void expectSuccessAfterwards(const Scenario& scenario, const Baseline& baseline, const ScenarioRun& run,
                             Fixture& fixture)
{
    const bool succeeded = run.outcome == returning(0);
    if (succeeded && scenario.expected != 0)
        return; // the drawing has changed, so that the call need not be refused again
    // A fault at place 0 fails nothing and spares the counting of allocations, which takes long.
    const ScenarioRun again = runScenario(scenario, fixture, InjectedFault{});
    EXPECT_EQ(again.outcome, returning(scenario.expected)) << "the same call without a fault";
    EXPECT_EQ(again.leaked, "") << "held after the same call without a fault";
    const StoredState now = fixture.storedState();
    EXPECT_TRUE(succeeded || haveSameContents(now, baseline.after))
        << "the same call without a fault: " << describeDifference(now, baseline.after);
}

} // namespace Tests
