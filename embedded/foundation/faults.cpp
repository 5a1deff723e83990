#include "embedded/foundation/faults.h"

namespace Embedded {
namespace {

struct State {
    FaultPlan plan;
    bool failing = false;
    std::size_t matches = 0;
    std::size_t struck = 0;
    std::vector<std::string> seen;
};

State& state()
{
    static State current;
    return current;
}

} // namespace

bool Faults::listening_ = false;

void Faults::arm(FaultPlan plan)
{
    state() = State{.plan = std::move(plan), .failing = true, .matches = 0, .struck = 0, .seen = {}};
    listening_ = true;
}

void Faults::disarm()
{
    listening_ = false;
}

void Faults::watch()
{
    state() = State{};
    listening_ = true;
}

const std::vector<std::string>& Faults::seen()
{
    return state().seen;
}

std::size_t Faults::struck()
{
    return state().struck;
}

std::optional<int> Faults::decide(std::string_view call, int failure)
{
    State& now = state();
    now.seen.emplace_back(call);
    if (!now.failing || (!now.plan.call.empty() && now.plan.call != call))
        return std::nullopt;
    ++now.matches;
    const bool hit = now.plan.fromThenOn ? now.matches >= now.plan.occurrence : now.matches == now.plan.occurrence;
    if (!hit)
        return std::nullopt;
    ++now.struck;
    return now.plan.code.value_or(failure);
}

} // namespace Embedded
