// Fails when a configuration of twice the length takes more than 2.2 times the time, or more than three times
// the memory of its text. Both lengths are measured in one run, alternately.
#include <algorithm>
#include <cstdio>
#include <ctime>
#include <limits>
#include <set>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "allocation_count.h"
#include "configuration_operations.h"

namespace Bench {
namespace {

constexpr double kMinimumPlausibleGrowth = 1.9;
/// Memory that does not depend on the text: a drawing and its objects, or the connection to the registry's database.
constexpr double kMemoryApartFromText = 256.0 * 1024;
/// Shorter times are not compareLengths.
constexpr double kShortestComparable = 100e-6;

struct Plan {
    std::size_t items; // the other length has twice as many
    int minimumRounds;
    int maximumRounds; // the number of rounds while the growth looks too large
    double maximumGrowth;
};
constexpr Plan kFull{500'000, 1, 6, 2.2};
/// Texts of these lengths are about as large as the processor's caches. One length may fit when twice the length does
/// not, so a larger growth is allowed.
constexpr Plan kQuick{20'000, 2, 20, 3.0};

/// The processor time, which does not depend on other processes.
double now()
{
    timespec time{};
    static_cast<void>(clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time)); // the clock always exists
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

/// One length of an operation: the shortest time and the largest memory of all its runs.
struct Measurement {
    std::size_t items = 0;
    double seconds = std::numeric_limits<double>::infinity();
    double memory = 0;
    bool fits = true;
    bool succeeded = true;
};

struct Comparison {
    const Operation* operation;
    double maximumGrowth;
    Measurement single;
    Measurement twice;

    double growth() const
    {
        return std::max(twice.seconds, kShortestComparable) / std::max(single.seconds, kShortestComparable);
    }
    bool isLinear() const { return growth() <= maximumGrowth; }
    /// Returns whether the measurement must be repeated: its growth is too large or implausibly small. In the latter
    /// case something slowed the shorter runs, which would hide a growth that is not linear.
    bool isDoubtful() const
    {
        return !isLinear() || (twice.seconds > kShortestComparable && growth() < kMinimumPlausibleGrowth);
    }
    bool fits() const { return single.fits && twice.fits; }
    bool succeeded() const { return single.succeeded && twice.succeeded; }
    bool passed() const { return isLinear() && fits() && succeeded(); }
};

void run(const Operation& operation, ConfigurationScene& scene, Measurement& measurement)
{
    operation.prepare(scene);
    operation.renew(scene);
    resetPeak();
    const double start = now();
    operation.run(scene);
    measurement.seconds = std::min(measurement.seconds, now() - start);
    const double peak = peakPerText(operation, scene);
    measurement.items = scene.items();
    measurement.memory = std::max(measurement.memory, peak);
    measurement.fits &=
        peak <= operation.maximumMemory + kMemoryApartFromText / static_cast<double>(scene.textInBytes());
    measurement.succeeded &= operation.succeeded(scene);
}

/// Measures one length for every operation of that length or, unless `isForAll`, for operations whose growth is in
/// doubt.
void runAll(std::span<Comparison> comparisons, Measurement Comparison::*length, std::size_t items,
            std::size_t fewerItems, bool isForAll)
{
    ConfigurationScene scene(items / fewerItems);
    std::string_view store;
    for (Comparison& comparison : comparisons) {
        const Operation& operation = *comparison.operation;
        if (operation.fewerItems != fewerItems || (!isForAll && !comparison.isDoubtful()))
            continue;
        if (std::exchange(store, operation.store) != operation.store)
            scene.clear();
        run(operation, scene, comparison.*length);
    }
}

void print(const Comparison& comparison)
{
    const Operation& operation = *comparison.operation;
    const Measurement& single = comparison.single;
    const Measurement& twice = comparison.twice;
    std::printf("%-10s %-16s %8zu %9.3f ms %8zu %9.3f ms   x %4.2f %s  %5.3f %s%s\n", operation.store, operation.name,
                single.items, 1e3 * single.seconds, twice.items, 1e3 * twice.seconds, comparison.growth(),
                comparison.isLinear() ? "ok" : "TOO SLOW", std::max(single.memory, twice.memory),
                comparison.fits() ? "ok" : "TOO LARGE", comparison.succeeded() ? "" : "  WRONG RESULT");
}

std::vector<Comparison> compareLengths(const Plan& plan)
{
    std::vector<Comparison> comparisons;
    std::set<std::size_t> fewerItems;
    for (const Operation& operation : operations()) {
        comparisons.push_back({&operation, plan.maximumGrowth, {}, {}});
        fewerItems.insert(operation.fewerItems);
    }
    for (int round = 0; round < plan.maximumRounds; ++round) {
        const bool isForAll = round < plan.minimumRounds;
        if (!isForAll && std::ranges::all_of(comparisons, &Comparison::isLinear))
            break;
        for (const std::size_t fewer : fewerItems) {
            runAll(comparisons, &Comparison::single, plan.items, fewer, isForAll);
            runAll(comparisons, &Comparison::twice, 2 * plan.items, fewer, isForAll);
            runAll(comparisons, &Comparison::single, plan.items, fewer, false);
        }
    }
    return comparisons;
}

bool check(const Plan& plan)
{
    const std::vector<Comparison> comparisons = compareLengths(plan);
    std::printf("%-10s %-16s %8s %12s %8s %12s   %s  %s\n", "store", "operation", "items", "time", "items", "time",
                "growth", "peak/text");
    std::ranges::for_each(comparisons, print);
    return std::ranges::all_of(comparisons, &Comparison::passed);
}

} // namespace
} // namespace Bench

int main(int argc, char** argv)
{
    const std::span arguments(argv, static_cast<std::size_t>(argc));
    const bool isQuick = argc == 2 && std::string_view(arguments[1]) == "--quick";
    if (argc > 1 && !isQuick) {
        std::fputs("usage: orvel_scale_check [--quick]\n", stderr);
        return 2;
    }
    Bench::returnLongTextsToSystem();
    return Bench::check(isQuick ? Bench::kQuick : Bench::kFull) ? 0 : 1;
}
