#include "storage/byte_block.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

namespace Tests {
namespace {

constexpr unsigned kSeed = 20261122;
constexpr std::size_t kLongest = 16;

using Block = std::array<unsigned char, kLongest>;

/// Two blocks whose bytes are equal at about every second place. Elsewhere they differ in one bit or in several.
std::pair<Block, Block> similarBlocks(std::mt19937& random)
{
    std::pair<Block, Block> blocks;
    for (std::size_t index = 0; index < kLongest; ++index) {
        blocks.first[index] = static_cast<unsigned char>(random());
        blocks.second[index] = blocks.first[index];
        if (random() % 2 == 0)
            blocks.second[index] ^= static_cast<unsigned char>(random() % 2 == 0 ? 1U << random() % 8 : random());
    }
    return blocks;
}

template <class Kind>
class ByteBlockTest : public testing::Test {
protected:
    /// The indices of the bytes in the mask, asked for one by one.
    static std::vector<std::size_t> bytesOf(typename Kind::Mask mask)
    {
        std::vector<std::size_t> indices;
        while (mask != 0) {
            indices.push_back(Kind::firstByte(mask));
            mask &= ~maskOfByte(indices.back());
        }
        return indices;
    }

private:
    static typename Kind::Mask maskOfByte(std::size_t index)
    {
        Block zeros{};
        Block one{};
        one.fill(1);
        one[index] = 0;
        return Kind::equalBytes(Kind::load(zeros.data()), Kind::load(one.data()));
    }
};

#ifdef ORVEL_VECTORS
using Kinds = testing::Types<Orvel::WordBlock, Orvel::VectorBlock>;
#else
using Kinds = testing::Types<Orvel::WordBlock>;
#endif
TYPED_TEST_SUITE(ByteBlockTest, Kinds, );

TYPED_TEST(ByteBlockTest, EqualBytes_AreThoseThatAPlainComparisonFinds)
{
    std::mt19937 random(kSeed);
    for (int round = 0; round < 20000; ++round) {
        const auto [left, right] = similarBlocks(random);
        std::vector<std::size_t> expected;
        for (std::size_t index = 0; index < TypeParam::kBytes; ++index) {
            if (left[index] == right[index])
                expected.push_back(index);
        }
        const auto mask = TypeParam::equalBytes(TypeParam::load(left.data()), TypeParam::load(right.data()));
        ASSERT_EQ(this->bytesOf(mask), expected) << "round " << round;
        ASSERT_EQ(mask == TypeParam::kAllBytes, expected.size() == TypeParam::kBytes);
    }
}

TYPED_TEST(ByteBlockTest, RepeatedByte_EqualsEachByteOfItsValue)
{
    for (unsigned value = 0; value < 256; ++value) {
        Block block{};
        block.fill(static_cast<unsigned char>(value));
        const auto repeated = TypeParam::repeat(static_cast<unsigned char>(value));
        EXPECT_EQ(TypeParam::equalBytes(TypeParam::load(block.data()), repeated), TypeParam::kAllBytes) << value;
        block.fill(static_cast<unsigned char>(value ^ 0x80));
        EXPECT_EQ(TypeParam::equalBytes(TypeParam::load(block.data()), repeated), 0U) << value;
    }
}

} // namespace
} // namespace Tests
