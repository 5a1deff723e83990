// Compares the module's packing with the plain one of these tests, over many inputs.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "storage/byte_patterns.h"
#include "storage/reference_run_length.h"
#include "storage/run_length.h"
#include "storage/run_length_calls.h"

namespace Tests {
namespace {

constexpr unsigned kSeed = 20240611;

class Inputs {
public:
    explicit Inputs(unsigned seed) : engine_(seed) {}

    std::size_t below(std::size_t bound) { return std::uniform_int_distribution<std::size_t>(0, bound - 1)(engine_); }
    unsigned char byte(std::size_t alphabet) { return static_cast<unsigned char>(below(alphabet)); }

    /// Any byte with the same probability.
    Bytes noise(std::size_t longest)
    {
        Bytes bytes(below(longest + 1));
        std::generate(bytes.begin(), bytes.end(), [&] { return byte(256); });
        return bytes;
    }

    /// Runs of one to `longestRun` over a small alphabet, so that runs also meet and merge.
    Bytes runs(std::size_t longest, std::size_t longestRun, std::size_t alphabet)
    {
        const std::size_t length = below(longest + 1);
        Bytes bytes;
        while (bytes.size() < length)
            bytes.insert(bytes.end(), std::min(1 + below(longestRun), length - bytes.size()), byte(alphabet));
        return bytes;
    }

    /// One of several mixtures; lengths from 0 to 600.
    Bytes next()
    {
        switch (below(5)) {
        case 0:
            return noise(600);
        case 1:
            return runs(600, 2, 2);
        case 2:
            return runs(600, 3, 256);
        case 3:
            return runs(600, 8, 4);
        default:
            return runs(600, 300, 3);
        }
    }

private:
    std::mt19937 engine_;
};

TEST(RunLengthAgreement, PackingIntoNewMemory_GivesTheSameBytes)
{
    Inputs inputs(kSeed + 4);
    constexpr std::size_t kLongest = 40000; // the literals of more than 256 packets
    for (int round = 0; round < 300; ++round) {
        const Bytes input = round % 2 == 0 ? inputs.noise(kLongest) : inputs.next();
        ASSERT_TRUE(Orvel::Pack(input.data(), input.size()) == referencePacked(input)) << "round " << round;
    }
}

TEST(RunLengthAgreement, PackedBytesAndSizesAgreeAndUnpackToTheInput)
{
    Inputs inputs(kSeed);
    for (int round = 0; round < 100000; ++round) {
        const Bytes input = inputs.next();
        const Bytes expected = referencePacked(input);
        const std::size_t size = packedSize(input);
        ASSERT_EQ(size, expected.size()) << "seed " << kSeed << ", round " << round << ": " << toHex(input);
        ASSERT_TRUE(packInto(size, input).bytes == expected)
            << "seed " << kSeed << ", round " << round << ": " << toHex(input);
        ASSERT_TRUE(unpackInto(input.size(), expected).bytes == input)
            << "seed " << kSeed << ", round " << round << ": " << toHex(input);
    }
}

TEST(RunLengthAgreement, UnpackedBytesAndSizesAgreeForRandomBytes)
{
    Inputs inputs(kSeed + 1);
    std::size_t accepted = 0;
    for (int round = 0; round < 100000; ++round) {
        Bytes input = inputs.noise(inputs.below(2) == 0 ? 8 : 600);
        const Bytes expected = referenceUnpacked(input).value_or(Bytes());
        ASSERT_EQ(unpackedSize(input), expected.size()) << "seed " << kSeed + 1 << ", round " << round;
        ASSERT_TRUE(unpackInto(expected.size(), input).bytes == expected)
            << "seed " << kSeed + 1 << ", round " << round << ": " << toHex(input);
        if (!expected.empty())
            ++accepted;
    }
    EXPECT_GT(accepted, 1000U) << "the inputs are meant to be of both sorts";
}

TEST(RunLengthAgreement, EveryTruncationOfPackedBytesAgrees)
{
    Inputs inputs(kSeed + 2);
    for (int round = 0; round < 300; ++round) {
        const Bytes whole = referencePacked(inputs.next());
        for (std::size_t length = 0; length < whole.size(); ++length) {
            // A buffer of its own, so that reading past its end is noticed.
            const Bytes part(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
            const Bytes expected = referenceUnpacked(part).value_or(Bytes());
            ASSERT_EQ(unpackedSize(part), expected.size()) << toHex(part);
            ASSERT_TRUE(unpackInto(expected.size(), part).bytes == expected) << toHex(part);
        }
    }
}

TEST(RunLengthAgreement, CapacityThatIsOneByteTooSmallIsRefused)
{
    Inputs inputs(kSeed + 3);
    for (int round = 0; round < 5000; ++round) {
        const Bytes input = inputs.next();
        if (input.empty())
            continue;
        const Bytes whole = referencePacked(input);
        ASSERT_EQ(packInto(whole.size() - 1, input).length, 0U) << toHex(input);
        ASSERT_EQ(unpackInto(input.size() - 1, whole).length, 0U) << toHex(input);
    }
}

} // namespace
} // namespace Tests
