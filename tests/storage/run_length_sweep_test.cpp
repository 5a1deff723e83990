// Compares packing over every small input and over pairs of runs and literals. Large sets are thinned here;
// orvel_codec_torture walks over the whole of them.
#include <gtest/gtest.h>

#include <cstdint>

#include "storage/run_length_sweep.h"

namespace Tests {
namespace {

constexpr std::size_t kMostCapacity = 130; // more than the longest packet unpacks to

void expectAgreement(const SweepResult& result, std::uint64_t inputs)
{
    EXPECT_EQ(result.disagreement, "");
    EXPECT_EQ(result.inputs, inputs);
}

TEST(RunLengthSweep, EveryInputOfUpToTwoBytes_UnpacksAsTheReferenceDoes)
{
    expectAgreement(sweepUnpacking(0, kMostCapacity), 1);
    expectAgreement(sweepUnpacking(1, kMostCapacity), 256);
    expectAgreement(sweepUnpacking(2, kMostCapacity), 65536);
}

TEST(RunLengthSweep, InputsOfThreeBytes_UnpackAsTheReferenceDoes)
{
    constexpr std::uint64_t kStride = std::uint64_t{7} * ORVEL_TEXT_STRIDE;
    expectAgreement(sweepUnpacking(3, kMostCapacity, kStride), 0x1000000 / kStride + 1);
}

TEST(RunLengthSweep, EveryStringOfUpToTenBytesOverThreeSymbols_PacksAsTheReferenceDoes)
{
    std::uint64_t strings = 1;
    for (std::size_t length = 0; length <= 10; ++length, strings *= 3)
        expectAgreement(sweepPacking(length, 3), strings);
}

TEST(RunLengthSweep, AdjacentRunsAndLiterals_PackAsTheReferenceDoes)
{
    constexpr std::uint64_t kStride =
        std::uint64_t{3} * ORVEL_TEXT_STRIDE; // no divisor of the lengths, so that all of them occur
    expectAgreement(sweepAlternations(400, kStride), 8 * (160000 / kStride + 1));
}

} // namespace
} // namespace Tests
