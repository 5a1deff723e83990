// Prints how fast the work of this project is beside the same work of well-known programs and libraries, and fails
// where a ratio is below its goal.
//
//     orvel_bench_peers [--rounds N] [WORK…]
//
// If a WORK is given, only the comparisons whose names contain one of the given texts run.
#include <malloc.h>

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <exception>
#include <string_view>
#include <vector>

#include "measurement.h"
#include "peers/comparisons.h"

namespace Bench {
namespace {

constexpr int kRounds = 15;

struct Options {
    int rounds = kRounds;
    std::vector<std::string_view> works;
};

Options parseOptions(int count, char** arguments)
{
    Options options;
    for (int index = 1; index < count; ++index) {
        const std::string_view argument = arguments[index];
        if (argument == "--rounds" && index + 1 < count) {
            const std::string_view number = arguments[++index];
            const auto end = std::from_chars(number.data(), number.data() + number.size(), options.rounds).ptr;
            requireSuccess(end == number.data() + number.size() && options.rounds > 0,
                           "--rounds: expected a whole number above 0");
        } else {
            options.works.push_back(argument);
        }
    }
    return options;
}

bool isWanted(const Comparison& comparison, const Options& options)
{
    return options.works.empty() || std::ranges::any_of(options.works, [&](std::string_view work) {
               return comparison.work.find(work) != std::string::npos;
           });
}

bool printTable(const std::vector<Comparison>& comparisons, const std::vector<Measured>& results)
{
    bool isMet = true;
    std::printf("| work | peer | ours, ms | peer, ms | times as fast | goal | |\n|---|---|---:|---:|---:|---:|---|\n");
    for (std::size_t index = 0; index < comparisons.size(); ++index) {
        const Comparison& comparison = comparisons[index];
        const Measured& result = results[index];
        const bool meets = result.ratio >= comparison.goal;
        isMet = isMet && meets;
        std::printf("| %s | %s | %.4g | %.4g | %.2f | %.2f | %s |\n", comparison.work.c_str(), comparison.peer.c_str(),
                    result.ourSeconds * 1e3, result.theirSeconds * 1e3, result.ratio, comparison.goal,
                    meets ? "met" : "missed");
    }
    return isMet;
}

bool run(const Options& options)
{
    std::vector<Comparison> comparisons;
    addCodecComparisons(comparisons);
    addConfigurationComparisons(comparisons);
    addTransformComparisons(comparisons);
    addCommandComparisons(comparisons);
    addLibraryComparisons(comparisons);
    std::erase_if(comparisons, [&](const Comparison& comparison) { return !isWanted(comparison, options); });
    requireSuccess(!comparisons.empty(), "no work has such a name");
    return printTable(comparisons, measure(comparisons, options.rounds));
}

} // namespace
} // namespace Bench

int main(int count, char** arguments)
{
    // As in a program that handles one text, a block from 128 KiB on comes from the system each time.
    mallopt(M_MMAP_THRESHOLD, 128 << 10);
    mallopt(M_TRIM_THRESHOLD, 128 << 10);
    try {
        return Bench::run(Bench::parseOptions(count, arguments)) ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "orvel_bench_peers: %s\n", failure.what());
        return 2;
    }
}
