// Reads blocks that this module or an earlier release of it wrote, and writes them again byte for byte.
//
// Change the files under golden/ only when a format changes on purpose. Then keep the earlier files under another name
// with a test that they are still read, and write new ones:
//     ORVEL_WRITE_GOLDEN_BLOCKS=1 build/asan/bin/coordsys_tests --gtest_filter='*GoldenBlock*'
// Update the page docs/formats/serialized-block.md and its examples.
#include <cstdlib>

#include "block_test.h"
#include "golden_blocks.h"
#include "storage/documented_example.h"
#include "storage/utf16le.h"

namespace Tests {
namespace {

const Library::CoordinateReferenceSystemDefinition* firstSystem(const ArrayHolder& definitions)
{
    return dynamic_cast<const Library::CoordinateReferenceSystemDefinition*>(definitions->GetItem(0));
}

class GoldenBlockTest : public BlockTest {
protected:
    static void SetUpTestSuite()
    {
        if (std::getenv("ORVEL_WRITE_GOLDEN_BLOCKS") == nullptr)
            return;
        for (const GoldenBlock& block : goldenBlocks())
            writeGoldenBlock(block, serialized(makeSourceSystem(block).get(), block.version));
    }
};

class EachGoldenBlock : public GoldenBlockTest, public testing::WithParamInterface<GoldenBlock> {};

INSTANTIATE_TEST_SUITE_P(All, EachGoldenBlock, testing::ValuesIn(goldenBlocks()),
                         [](const testing::TestParamInfo<GoldenBlock>& instance) {
                             return instance.param.name + (instance.param.isText() ? "_text" : "_packed");
                         });

TEST_P(EachGoldenBlock, HasOnlyItsSystem)
{
    const ArrayHolder definitions = deserialized(GetParam().bytes());
    EXPECT_EQ(describe(definitions), Texts{L"system " + GetParam().code});
}

TEST_P(EachGoldenBlock, IsWrittenAgainByteForByte)
{
    const Bytes block = GetParam().bytes();
    const ArrayHolder definitions = deserialized(block);
    ASSERT_TRUE(definitions && firstSystem(definitions) != nullptr);
    EXPECT_EQ(serialized(firstSystem(definitions), GetParam().version), block)
        << "Blocks in users' hands look like the golden one. If the format was changed on purpose, the top of this "
           "file says what to do.";
}

TEST_P(EachGoldenBlock, HasTheFormOfItsVersion)
{
    const Bytes block = GetParam().bytes();
    if (GetParam().isText()) {
        EXPECT_EQ(block.size() % 2, 0U);
        EXPECT_EQ(Orvel::utf16leLength(block.data()), block.size() - 2) << "one NUL unit, at the end";
        EXPECT_EQ(block.front(), '{');
        return;
    }
    // The block begins with a literal that holds the 16 bytes of the class identifier.
    const Bytes classIdentifier{0x4b, 0xea, 0x00, 0x3c, 0x84, 0x0b, 0xd2, 0x11,
                                0x9d, 0xe2, 0x08, 0x00, 0x09, 0xac, 0xe1, 0x8e};
    ASSERT_GT(block.size(), 17U);
    EXPECT_EQ(Bytes(block.begin() + 1, block.begin() + 17), classIdentifier);
}

TEST_F(GoldenBlockTest, BothFormsOfASystem_HoldTheSameDefinition)
{
    for (std::size_t index = 0; index < goldenBlocks().size(); index += 2) {
        const ArrayHolder packed = deserialized(goldenBlocks()[index].bytes());
        const ArrayHolder text = deserialized(goldenBlocks()[index + 1].bytes());
        ASSERT_TRUE(packed && text);
        EXPECT_EQ(serializedText(packed->GetItem(0)), serializedText(text->GetItem(0))) << goldenBlocks()[index];
    }
}

TEST_F(GoldenBlockTest, DocumentedPackedBlock_IsTheGoldenBlock)
{
    const auto block = std::ranges::find(goldenBlocks(), "local", &GoldenBlock::name);
    const DocumentedExample example("serialized-block.md", "packed-block");
    EXPECT_EQ(example.bytes(), block->bytes()) << example.correction(printed(block->bytes()));
}

TEST_F(GoldenBlockTest, DocumentedTextBlock_IsTheGoldenBlock)
{
    const auto block = std::ranges::find(goldenBlocks(), "local", &GoldenBlock::name) + 1;
    const DocumentedExample example("serialized-block.md", "text-block");
    const Bytes bytes = Orvel::encodeUtf16le(Embedded::wideFromUtf8(example.text()));
    EXPECT_EQ(bytes, block->bytes());
    const DocumentedExample beginning("serialized-block.md", "text-block-bytes");
    const Bytes first = beginning.bytes();
    ASSERT_LT(first.size(), bytes.size());
    EXPECT_TRUE(std::equal(first.begin(), first.end(), bytes.begin()));
}

} // namespace
} // namespace Tests
