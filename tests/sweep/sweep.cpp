#include "sweep/sweep.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <stdexcept>

#include "sweep/platform_calls.h"

namespace Tests {
namespace {

/// More pairs than these are drawn by lot, always the same ones.
constexpr std::size_t kMostPairs = 10000;
constexpr std::uint32_t kSeed = 20240229;

std::vector<FaultPlace> upTo(std::size_t last)
{
    std::vector<FaultPlace> places;
    for (std::size_t place = 1; place <= last; ++place)
        places.push_back({place});
    return places;
}

std::string joined(const std::vector<std::string>& names)
{
    std::string text;
    for (const std::string& name : names)
        text += text.empty() ? name : ", " + name;
    return text;
}

void thinOut(std::vector<FaultPlace>& places)
{
    if (places.size() > kMostPairs) {
        std::mt19937 random(kSeed);
        std::ranges::shuffle(places, random);
        places.resize(kMostPairs);
    }
    std::vector<FaultPlace> kept;
    for (std::size_t place = 0; place < places.size(); place += ORVEL_SWEEP_PAIR_STRIDE)
        kept.push_back(places[place]);
    places = std::move(kept);
}

} // namespace

Sweep::Sweep(const Scenario& scenario) : scenario_(scenario), setting_(scenario.setting())
{
    static_cast<void>(attempted(scenario_, *std::make_unique<Stage>(setting_, folder_), std::nullopt)); // warms up
    Stage stage(setting_, folder_);
    reference_.before = stage.stored();
    reference_.attempt = attempted(scenario_, stage, std::nullopt);
    reference_.after = stage.stored();
    EXPECT_EQ(reference_.attempt.outcome, returning(scenario_.expected)) << "when nothing fails";
    EXPECT_EQ(reference_.attempt.held, "") << "when nothing fails";
    EXPECT_TRUE(scenario_.expected == 0 || reference_.before == reference_.after) << "changed by what was refused";
    EXPECT_EQ(scenario_.canFail, !reference_.attempt.calls.empty() || reference_.attempt.allocations > 0);
}

std::size_t Sweep::run(FaultKind kind)
{
    if (const std::optional<FaultPlace> place = placeToReplay(scenario_, kind)) {
        runPoint(kind, *place);
        return 1;
    }
    const std::vector<FaultPlace> places = isReplaying() ? std::vector<FaultPlace>() : placesOf(kind);
    for (const FaultPlace& place : places)
        runPoint(kind, place);
    return places.size();
}

std::vector<FaultPlace> Sweep::placesOf(FaultKind kind)
{
    switch (kind) {
    case FaultKind::once:
    case FaultKind::fromThenOn:
        return upTo(reference_.attempt.calls.size());
    case FaultKind::throwing:
        return placesToThrow();
    case FaultKind::allocation:
        return upTo(reference_.attempt.allocations);
    case FaultKind::hostAllocation:
        return upTo(hostMayRunShort() ? reference_.attempt.hostAllocations : 0);
    case FaultKind::notice:
        return upTo(reference_.attempt.notices);
    case FaultKind::pair:
        return pairs();
    }
    throw std::logic_error("a kind of fault that the sweep does not know");
}

// Extended data is copied when an object is written to, as std::variant, and the one of g++ 12 destroys what was never
// made when a copy throws.
bool Sweep::hostMayRunShort() const
{
    const std::string contents = contentsOf(*loadedFromMemory(setting_.drawing));
    return scenario_.survivesHostShortage && timesIn(contents, "  extended data of ") == 0;
}

std::vector<FaultPlace> Sweep::placesToThrow() const
{
    const std::vector<std::string>& calls = reference_.attempt.calls;
    std::vector<FaultPlace> places = upTo(calls.size());
    std::erase_if(places, [&](const FaultPlace& place) { return !mayThrow(calls[place.first - 1]); });
    return places;
}

std::vector<FaultPlace> Sweep::pairs()
{
    std::vector<FaultPlace> places;
    for (const FaultPlace& first : upTo(reference_.attempt.calls.size())) {
        Stage stage(setting_, folder_);
        const Attempt failed = attempted(scenario_, stage, Strike{FaultKind::once, first});
        for (std::size_t second = first.first + 1; second <= failed.calls.size(); ++second)
            places.push_back({first.first, second});
    }
    thinOut(places);
    return places;
}

Strike Sweep::strikeAt(FaultKind kind, const FaultPlace& place) const
{
    Strike strike{kind, place};
    if (kind == FaultKind::once && place.first <= reference_.attempt.calls.size())
        strike.code = recognisableFailure(reference_.attempt.calls[place.first - 1]);
    return strike;
}

void Sweep::runPoint(FaultKind kind, const FaultPlace& place)
{
    SCOPED_TRACE(pointName(scenario_, kind, place));
    Stage stage(setting_, folder_);
    const Attempt attempt = attempted(scenario_, stage, strikeAt(kind, place));
    SCOPED_TRACE("failed: " + joined(attempt.struck));
    expectPromisesKept(scenario_, reference_, stage, attempt);
    expectSuccessAfterwards(scenario_, reference_, attempt, stage);
}

} // namespace Tests
