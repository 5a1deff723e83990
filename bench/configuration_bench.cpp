// The benchmarks of transformation configurations, by their length.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>

#include "allocation_count.h"
#include "configuration_operations.h"

namespace Bench {
namespace {

constexpr std::array<std::size_t, 5> kItems{1, 100, 10'000, 500'000, 1'000'000};
constexpr std::size_t kManyItems = 10'000;
constexpr std::size_t kItemsInAllRuns = 1'000'000;
constexpr std::size_t kMinimumRuns = 2;
constexpr double kMinimumSeconds = 0.1;

/// Measures the time of the operation only.
void runOnce(benchmark::State& state, const Operation& operation, ConfigurationScene& scene)
{
    state.PauseTiming();
    operation.renew(scene);
    resetPeak();
    state.ResumeTiming();
    operation.run(scene);
    state.PauseTiming();
    state.counters["peak/text"] = peakPerText(operation, scene);
    if (!operation.succeeded(scene))
        state.SkipWithError("the operation has a wrong result");
    state.ResumeTiming();
}

void measure(benchmark::State& state, const Operation& operation)
{
    const auto items = static_cast<std::size_t>(state.range(0));
    ConfigurationScene scene(items);
    operation.prepare(scene);
    for ([[maybe_unused]] auto round : state)
        runOnce(state, operation, scene);
    const std::int64_t rounds = state.iterations();
    state.SetItemsProcessed(rounds * static_cast<std::int64_t>(items));
    state.SetBytesProcessed(rounds * static_cast<std::int64_t>(scene.textInBytes()));
    state.counters["s/item"] = benchmark::Counter(static_cast<double>(rounds) * static_cast<double>(items),
                                                  benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

/// Preparing a run can take far longer than the run, so a long text gets a number of runs instead of a time.
void registerOperation(const Operation& operation, std::size_t items)
{
    const std::string name = std::string(operation.store) + "/" + operation.name;
    auto* const benchmark = benchmark::RegisterBenchmark(
        name.c_str(), [&operation](benchmark::State& state) { measure(state, operation); });
    benchmark->ArgName("items")->Arg(static_cast<std::int64_t>(items))->Unit(benchmark::kMicrosecond);
    if (items < kManyItems)
        benchmark->MinTime(kMinimumSeconds);
    else
        benchmark->Iterations(static_cast<benchmark::IterationCount>(
            std::max(kMinimumRuns, kItemsInAllRuns / operation.fewerItems / items)));
}

void registerAll()
{
    for (const Operation& operation : operations()) {
        for (const std::size_t items : kItems) {
            if (items <= kItems.back() / operation.fewerItems)
                registerOperation(operation, items);
        }
    }
}

} // namespace
} // namespace Bench

int main(int argc, char** argv)
{
    Bench::returnLongTextsToSystem();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    Bench::registerAll();
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
