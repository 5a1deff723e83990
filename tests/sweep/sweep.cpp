#include "sweep/sweep.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <stdexcept>

#include "support/drawing.h"
#include "sweep/platform_calls.h"

namespace Tests {
namespace {

/// A scenario with more pairs runs a random selection of them. The fixed seed always gives the same selection.
constexpr std::size_t kMaximumPairs = 10000;
constexpr std::uint32_t kSeed = 20240229;

std::vector<FaultPlace> placesUpTo(std::size_t last)
{
    std::vector<FaultPlace> places;
    for (std::size_t place = 1; place <= last; ++place)
        places.push_back({place});
    return places;
}

std::string joinNames(const std::vector<std::string>& names)
{
    std::string text;
    for (const std::string& name : names)
        text += text.empty() ? name : ", " + name;
    return text;
}

void selectPairs(std::vector<FaultPlace>& places)
{
    if (places.size() > kMaximumPairs) {
        std::mt19937 random(kSeed);
        std::ranges::shuffle(places, random);
        places.resize(kMaximumPairs);
    }
    std::vector<FaultPlace> kept;
    for (std::size_t place = 0; place < places.size(); place += ORVEL_SWEEP_PAIR_STRIDE)
        kept.push_back(places[place]);
    places = std::move(kept);
}

} // namespace

Sweep::Sweep(const Scenario& scenario) : scenario_(scenario), initialState_(scenario.initialState())
{
    {
        Fixture first(initialState_, folder_);
        runScenario(scenario_, first, std::nullopt); // fills caches, so that later runs allocate nothing for them
    }
    Fixture fixture(initialState_, folder_);
    baseline_.before = fixture.storedState();
    baseline_.run = runScenario(scenario_, fixture, std::nullopt);
    baseline_.after = fixture.storedState();
    EXPECT_EQ(baseline_.run.outcome, returning(scenario_.expected)) << "when nothing fails";
    EXPECT_EQ(baseline_.run.leaked, "") << "when nothing fails";
    EXPECT_TRUE(scenario_.expected == 0 || baseline_.before == baseline_.after)
        << "the drawing was changed although the call was refused";
    EXPECT_EQ(scenario_.canFail, !baseline_.run.calls.empty() || baseline_.run.allocations > 0);
}

std::size_t Sweep::run(FaultKind kind)
{
    if (const std::optional<FaultPlace> place = placeToReplay(scenario_, kind)) {
        runPoint(kind, *place);
        return 1;
    }
    const std::vector<FaultPlace> places = isReplaying() ? std::vector<FaultPlace>() : placesFor(kind);
    for (const FaultPlace& place : places)
        runPoint(kind, place);
    return places.size();
}

std::vector<FaultPlace> Sweep::placesFor(FaultKind kind)
{
    switch (kind) {
    case FaultKind::once:
    case FaultKind::fromThenOn:
        return placesUpTo(baseline_.run.calls.size());
    case FaultKind::throwing:
        return placesThatMayThrow();
    case FaultKind::allocation:
        return placesUpTo(baseline_.run.allocations);
    case FaultKind::hostAllocation:
        return placesUpTo(hostAllocationsMayFail() ? baseline_.run.hostAllocations : 0);
    case FaultKind::notice:
        return placesUpTo(baseline_.run.notices);
    case FaultKind::pair:
        return pairs();
    }
    throw std::logic_error("unknown kind of fault");
}

// Writing to an object copies its extended data, a std::variant. When such a copy throws, the std::variant of g++ 12
// destroys a value that was never constructed.
bool Sweep::hostAllocationsMayFail() const
{
    const std::string contents = drawingContents(*loadFromBytes(initialState_.drawing));
    return scenario_.survivesHostShortage && countOccurrences(contents, "  extended data of ") == 0;
}

std::vector<FaultPlace> Sweep::placesThatMayThrow() const
{
    const std::vector<std::string>& calls = baseline_.run.calls;
    std::vector<FaultPlace> places = placesUpTo(calls.size());
    std::erase_if(places, [&](const FaultPlace& place) { return !mayThrow(calls[place.first - 1]); });
    return places;
}

std::vector<FaultPlace> Sweep::pairs()
{
    std::vector<FaultPlace> places;
    for (const FaultPlace& first : placesUpTo(baseline_.run.calls.size())) {
        Fixture fixture(initialState_, folder_);
        const ScenarioRun failed = runScenario(scenario_, fixture, InjectedFault{FaultKind::once, first});
        for (std::size_t second = first.first + 1; second <= failed.calls.size(); ++second)
            places.push_back({first.first, second});
    }
    selectPairs(places);
    return places;
}

InjectedFault Sweep::faultAt(FaultKind kind, const FaultPlace& place) const
{
    InjectedFault fault{kind, place};
    if (kind == FaultKind::once && place.first <= baseline_.run.calls.size())
        fault.code = distinctFailure(baseline_.run.calls[place.first - 1]);
    return fault;
}

void Sweep::runPoint(FaultKind kind, const FaultPlace& place)
{
    SCOPED_TRACE(pointName(scenario_, kind, place));
    Fixture fixture(initialState_, folder_);
    const ScenarioRun run = runScenario(scenario_, fixture, faultAt(kind, place));
    SCOPED_TRACE("failed: " + joinNames(run.failures));
    expectPromisesKept(scenario_, baseline_, fixture, run);
    expectSuccessAfterwards(scenario_, baseline_, run, fixture);
}

} // namespace Tests
