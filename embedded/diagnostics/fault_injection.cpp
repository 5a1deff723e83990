#include "embedded/diagnostics/fault_injection.h"

#include <new>
#include <stdexcept>
#include <utility>

namespace Embedded {
namespace {

struct State {
    FaultPlan plan;
    bool failing = false;
    std::size_t matches = 0;
    std::size_t failed = 0;
    std::vector<std::string> seen;
    std::function<void(std::string_view)> observer;

    /// Returns whether the plan makes the current call fail. `matches` already counts that call.
    bool mustFail() const
    {
        if (matches == plan.occurrence || (plan.second != 0 && matches == plan.second))
            return true;
        return plan.fromThenOn && matches > plan.occurrence;
    }
};

State& state()
{
    static State current;
    return current;
}

} // namespace

bool FaultInjection::listening_ = false;

void FaultInjection::arm(FaultPlan plan)
{
    state() = State{.plan = std::move(plan), .failing = true, .matches = 0, .failed = 0, .seen = {}, .observer = {}};
    listening_ = true;
}

void FaultInjection::disarm()
{
    listening_ = false;
}

void FaultInjection::watch(std::function<void(std::string_view)> observer)
{
    state() = State{};
    state().observer = std::move(observer);
    listening_ = true;
}

const std::vector<std::string>& FaultInjection::seen()
{
    return state().seen;
}

std::size_t FaultInjection::failedCalls()
{
    return state().failed;
}

std::optional<int> FaultInjection::decide(std::string_view call, int failure)
{
    State& now = state();
    now.seen.emplace_back(call);
    if (now.observer)
        now.observer(call);
    if (now.plan.limit != 0 && now.seen.size() > now.plan.limit)
        throw std::runtime_error("more than " + std::to_string(now.plan.limit) + " fallible calls");
    if (!now.failing || (!now.plan.call.empty() && now.plan.call != call))
        return std::nullopt;
    ++now.matches;
    if (!now.mustFail())
        return std::nullopt;
    ++now.failed;
    if (now.plan.throws)
        throw std::bad_alloc();
    return now.plan.code.value_or(failure);
}

} // namespace Embedded
