// Reads every golden block truncated at every byte and with every bit flipped. Each reading returns a result, leaks
// nothing and reads no byte beyond the block and its NUL unit. Sanitized builds damage every eleventh byte and bit of a
// text.
#include "block_test.h"
#include "golden_blocks.h"

namespace Tests {
namespace {

/// One block and the part of its bytes that is damaged.
struct Damage {
    GoldenBlock block;
    std::size_t part = 0;
    std::size_t parts = 1;
};

std::ostream& operator<<(std::ostream& out, const Damage& damage)
{
    return out << damage.block << ", part " << damage.part + 1 << " of " << damage.parts;
}

/// Texts are long and come in eight parts, for tests that run side by side.
std::vector<Damage> damages()
{
    std::vector<Damage> all;
    for (const GoldenBlock& block : goldenBlocks()) {
        const std::size_t parts = block.isText() ? 8 : 1;
        for (std::size_t part = 0; part < parts; ++part)
            all.push_back({block, part, parts});
    }
    return all;
}

class DamagedBlock : public BlockTest, public testing::WithParamInterface<Damage> {
protected:
    const Bytes block = GetParam().block.bytes();
    const std::size_t first = block.size() * GetParam().part / GetParam().parts;
    const std::size_t behind = block.size() * (GetParam().part + 1) / GetParam().parts;

    const std::size_t stride = GetParam().block.isText() ? ORVEL_TEXT_STRIDE : 1;

    ArrayHolder definitions;

    /// Expects eOk with an array that is not empty, or a failure without an array.
    Qeapp::ErrorStatus decode(const Bytes& damaged)
    {
        const GuardedBlock guarded(damaged);
        const Qeapp::ErrorStatus result =
            Cs::DeserializeCoordinateSystem(definitions.put(), guarded.get(), guarded.length());
        EXPECT_EQ(definitions && definitions->GetCount() > 0, result == Qeapp::eOk);
        EXPECT_TRUE(!definitions || result == Qeapp::eOk);
        return result;
    }
};

INSTANTIATE_TEST_SUITE_P(All, DamagedBlock, testing::ValuesIn(damages()),
                         [](const testing::TestParamInfo<Damage>& instance) {
                             return instance.param.block.name +
                                    (instance.param.block.isText() ? "_text_" : "_packed_") +
                                    std::to_string(instance.param.part + 1);
                         });

TEST_P(DamagedBlock, TruncatedBlock_IsRefused)
{
    // A text may lack its last three zeros, because the caller provides a NUL unit behind the block.
    const std::size_t complete = GetParam().block.isText() ? block.size() - 3 : block.size();
    for (std::size_t length = first; length < behind; length += stride) {
        const Bytes truncated(block.data(), block.data() + length);
        ASSERT_EQ(decode(truncated), length < complete ? Qeapp::eInvalidInput : Qeapp::eOk) << length << " bytes";
    }
}

// A text has no checksum. A packed block has one, so a readable damaged block must hold the same definition.
TEST_P(DamagedBlock, BlockWithOneBitFlipped_IsReadOrRefused)
{
    const std::wstring whole = serializedText(deserialized(block)->GetItem(0));
    Bytes damaged = block;
    for (std::size_t bit = first * 8; bit < behind * 8; bit += stride) {
        const auto mask = static_cast<unsigned char>(1U << bit % 8);
        damaged[bit / 8] ^= mask;
        const Qeapp::ErrorStatus result = decode(damaged);
        ASSERT_TRUE(result == Qeapp::eOk || result == Qeapp::eInvalidInput) << "bit " << bit << ": " << result;
        if (result == Qeapp::eOk && !GetParam().block.isText()) {
            ASSERT_EQ(serializedText(definitions->GetItem(0)), whole)
                << "bit " << bit << ": the checksum missed the damage";
        }
        damaged[bit / 8] ^= mask;
    }
}

} // namespace
} // namespace Tests
