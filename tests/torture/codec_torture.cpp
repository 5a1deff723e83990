// Runs the complete comparisons of which tests/storage runs a part. Prints their figures and fails at a difference.
#include <chrono>
#include <cstdio>

#include "storage/run_length_sweep.h"

namespace {

using Tests::SweepResult;

constexpr std::size_t kMaxCapacity = 130;
constexpr std::size_t kLongestUnpacked = 3;
constexpr std::size_t kLongestString = 10;
constexpr std::size_t kSymbols = 3;
constexpr std::size_t kLongestStretch = 400;

/// Runs a comparison and prints its figures. Returns whether it found no difference.
template <class Walk>
bool report(const char* what, const Walk& walk)
{
    const auto begin = std::chrono::steady_clock::now();
    const SweepResult result = walk();
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
    std::printf("%s: %llu inputs, %llu calls, %.1f seconds\n", what, static_cast<unsigned long long>(result.inputs),
                static_cast<unsigned long long>(result.calls), seconds.count());
    if (!result.disagreement.empty())
        std::printf("  disagreement: %s\n", result.disagreement.c_str());
    std::fflush(stdout);
    return result.disagreement.empty();
}

/// Adds up the comparisons over every length up to the longest.
template <class Walk>
SweepResult overLengths(std::size_t longest, const Walk& walk)
{
    SweepResult total;
    for (std::size_t length = 0; length <= longest && total.disagreement.empty(); ++length) {
        const SweepResult result = walk(length);
        total.inputs += result.inputs;
        total.calls += result.calls;
        total.disagreement = result.disagreement;
    }
    return total;
}

} // namespace

int main()
{
    const bool unpacking = report("every input of up to 3 bytes, unpacked into every capacity from 0 to 130", [] {
        return overLengths(kLongestUnpacked,
                           [](std::size_t length) { return Tests::sweepUnpacking(length, kMaxCapacity); });
    });
    const bool packing = report("every string of up to 10 bytes over 3 symbols, packed and back", [] {
        return overLengths(kLongestString, [](std::size_t length) { return Tests::sweepPacking(length, kSymbols); });
    });
    const bool alternations = report("runs and literals of every two lengths from 1 to 400, packed and back",
                                     [] { return Tests::sweepAlternations(kLongestStretch); });
    return unpacking && packing && alternations ? 0 : 1;
}
