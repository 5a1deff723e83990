#include "peers/comparison.h"

#include <algorithm>
#include <ctime>
#include <numeric>
#include <random>
#include <utility>

#include "measurement.h"

namespace Bench {
namespace {

constexpr double kShortestTurn = 0.02; // seconds; what takes less is repeated
constexpr unsigned kOrderSeed = 20261122;

/// Returns the processor time of this process and of its children that have ended.
double processorSecondsSoFar()
{
    timespec own{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &own);
    rusage children{};
    getrusage(RUSAGE_CHILDREN, &children);
    return static_cast<double>(own.tv_sec) + static_cast<double>(own.tv_nsec) * 1e-9 + processorSeconds(children);
}

double timeRepeated(const std::function<void()>& work, int times)
{
    const double start = processorSecondsSoFar();
    for (int time = 0; time < times; ++time)
        work();
    return (processorSecondsSoFar() - start) / times;
}

/// How often the work is done in one turn.
int repetitions(const std::function<void()>& work)
{
    work(); // fills caches
    int times = 1;
    for (double once = timeRepeated(work, 1); once * times < kShortestTurn; once = timeRepeated(work, times))
        times = std::max(times * 2, static_cast<int>(std::min(kShortestTurn / once, 1e6)));
    return times;
}

struct Side {
    const std::function<void()>* work;
    int repetitions;
    std::vector<double> times = {};
};

struct Pair {
    Side ours;
    Side theirs;
};

Measured summary(const Pair& pair)
{
    std::vector<double> ratios;
    for (std::size_t round = 0; round < pair.ours.times.size(); ++round)
        ratios.push_back(pair.theirs.times[round] / pair.ours.times[round]);
    return {median(std::move(ratios)), median(pair.ours.times), median(pair.theirs.times)};
}

} // namespace

std::vector<Measured> measure(const std::vector<Comparison>& comparisons, int rounds)
{
    std::vector<Pair> pairs;
    for (const Comparison& comparison : comparisons)
        pairs.push_back(
            {{&comparison.ours, repetitions(comparison.ours)}, {&comparison.theirs, repetitions(comparison.theirs)}});
    std::vector<std::size_t> order(pairs.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::mt19937 random(kOrderSeed);
    for (int round = 0; round < rounds; ++round) {
        std::ranges::shuffle(order, random);
        for (const std::size_t index : order) {
            Side* sides[] = {&pairs[index].ours, &pairs[index].theirs};
            std::ranges::shuffle(sides, random);
            for (Side* const side : sides)
                side->times.push_back(timeRepeated(*side->work, side->repetitions));
        }
    }
    std::vector<Measured> results;
    std::ranges::transform(pairs, std::back_inserter(results), summary);
    return results;
}

} // namespace Bench
