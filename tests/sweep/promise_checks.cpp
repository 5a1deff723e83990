#include "sweep/promise_checks.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "sweep/documented_results.h"
#include "sweep/platform_calls.h"
#include "sweep/tolerated_failures.h"

namespace Tests {
namespace {

bool anyStruck(const Attempt& attempt, const std::function<bool(const std::string&)>& is)
{
    return std::ranges::any_of(attempt.struck, is);
}

/// An exception is allowed only where the failure was one, or an allocation that has no other way to fail.
bool mayEndInBadAlloc(const Scenario& scenario, const Attempt& attempt)
{
    if (scenario.answersOutOfMemory)
        return false;
    return anyStruck(attempt, [](const std::string& call) {
        return call == "allocation" || call == "hostAllocation" || throwsByItself(call) || mayThrow(call);
    });
}

void expectAllowedException(const Scenario& scenario, const Attempt& attempt)
{
    switch (attempt.outcome.way) {
    case Outcome::Way::returned:
        return;
    case Outcome::Way::outOfMemory:
        EXPECT_TRUE(mayEndInBadAlloc(scenario, attempt)) << "ended in std::bad_alloc";
        return;
    case Outcome::Way::refusedByReactor:
        EXPECT_EQ(attempt.struck, std::vector<std::string>{"notice"});
        return;
    case Outcome::Way::otherwise:
        ADD_FAILURE() << "ended in an exception of another kind";
    }
}

void expectDocumentedResult(const Scenario& scenario, const Attempt& attempt)
{
    if (!attempt.outcome.returned())
        return;
    const int result = attempt.outcome.result;
    EXPECT_TRUE(isDocumented(scenario.function, result) || isHostsOwnFailure(result))
        << "undocumented result " << result;
}

/// A call that succeeded all the same must have had reasons to.
void expectNothingSwallowed(const Scenario& scenario, const Attempt& attempt)
{
    if (attempt.outcome != returning(0))
        return;
    for (const std::string& call : attempt.struck)
        EXPECT_TRUE(reasonToPassOver(scenario.function, call)) << "succeeded although this failed: " << call;
}

using Same = bool (*)(const Stored&, const Stored&);

bool isEqual(const Stored& left, const Stored& right)
{
    return left == right;
}

/// All after a success, nothing after a failure; after an exception, which may have come from a reactor that was told
/// that it is done, either.
bool isAllOrNothing(const Reference& reference, const Outcome& outcome, const Stored& now, Same same)
{
    if (outcome == returning(0) || same(now, reference.before))
        return true;
    return !outcome.returned() && same(now, reference.after);
}

bool isAllowedState(const Scenario& scenario, const Reference& reference, const Stage& stage, const Attempt& attempt,
                    const Stored& now)
{
    switch (scenario.promise) {
    case Promise::readsOnly:
        return now == reference.before;
    case Promise::allOrNothing:
        return isAllOrNothing(reference, attempt.outcome, now, isEqual);
    case Promise::formerOrNew:
        return attempt.wasToldNotThere || isAllOrNothing(reference, attempt.outcome, now, haveSameContents);
    case Promise::removedOrNothing:
        return now == reference.before || now == reference.after || stage.hasNoSystem();
    case Promise::partsMayRemain:
        return true;
    }
    return false;
}

void expectPromisedState(const Scenario& scenario, const Reference& reference, const Stage& stage,
                         const Attempt& attempt)
{
    const Stored now = stage.stored();
    EXPECT_TRUE(isAllowedState(scenario, reference, stage, attempt, now)) << differenceOf(now, reference.before);
}

} // namespace

void expectPromisesKept(const Scenario& scenario, const Reference& reference, const Stage& stage,
                        const Attempt& attempt)
{
    EXPECT_FALSE(attempt.struck.empty()) << "nothing failed";
    EXPECT_EQ(attempt.held, "") << "left behind by the call";
    expectAllowedException(scenario, attempt);
    expectDocumentedResult(scenario, attempt);
    expectNothingSwallowed(scenario, attempt);
    expectPromisedState(scenario, reference, stage, attempt);
}

void expectSuccessAfterwards(const Scenario& scenario, const Reference& reference, const Attempt& attempt, Stage& stage)
{
    const bool succeeded = attempt.outcome == returning(0);
    if (succeeded && scenario.expected != 0)
        return;                                                 // what was to be refused is gone
    const Attempt again = attempted(scenario, stage, Strike{}); // without counting allocations, which takes long
    EXPECT_EQ(again.outcome, returning(scenario.expected)) << "the same call afterwards";
    EXPECT_EQ(again.held, "") << "left behind by the same call afterwards";
    const Stored now = stage.stored();
    EXPECT_TRUE(succeeded || haveSameContents(now, reference.after))
        << "the same call afterwards: " << differenceOf(now, reference.after);
}

} // namespace Tests
