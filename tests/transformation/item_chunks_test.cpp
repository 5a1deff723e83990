// Splitting a configuration text into the chunks of its items.
#include "support/platform_test.h"
#include "transformation/item_text.h"

namespace Tests {
namespace {

using ItemChunks = PlatformTest;
using Chunks = std::vector<std::wstring_view>;

TEST_F(ItemChunks, TextWithoutAClosingTagHasNoChunk)
{
    for (const std::wstring_view text : {L"", L"x", L"<Item>x", L"</item>", L"</Item", L"</Item >", L"/Item>"})
        EXPECT_EQ(Orvel::SplitIntoItemChunks(text), Chunks()) << testing::PrintToString(text);
}

TEST_F(ItemChunks, EachChunkEndsWithAClosingTag)
{
    const Chunks expected{L"<Item>a</Item>", L"\r\nb</Item>", L"</Item>"};
    EXPECT_EQ(Orvel::SplitIntoItemChunks(L"<Item>a</Item>\r\nb</Item></Item>"), expected);
}

TEST_F(ItemChunks, TextAfterTheLastClosingTagBelongsToNoChunk)
{
    const Chunks expected{L"a</Item>"};
    EXPECT_EQ(Orvel::SplitIntoItemChunks(L"a</Item> and so on</Item"), expected);
}

TEST_F(ItemChunks, ClosingTagIsFoundAfterAnIncompleteOne)
{
    const Chunks expected{L"</</Item</Item>"};
    EXPECT_EQ(Orvel::SplitIntoItemChunks(L"</</Item</Item>"), expected);
}

TEST_F(ItemChunks, ChunksContainEveryCharacterUpToTheLastClosingTag)
{
    const std::wstring text = L"<Items><Item>a</Item>x<Item>b</Item></Item>rest";
    std::wstring joined;
    for (const std::wstring_view chunk : Orvel::SplitIntoItemChunks(text))
        joined += chunk;
    EXPECT_EQ(joined + L"rest", text);
}

TEST_F(ItemChunks, ChunksAreViewsOfTheText)
{
    const std::wstring text = L"a</Item>b</Item>";
    const Chunks chunks = Orvel::SplitIntoItemChunks(text);
    ASSERT_EQ(chunks.size(), 2U);
    EXPECT_EQ(chunks[0].data(), text.data());
    EXPECT_EQ(chunks[1].data(), text.data() + 8);
}

TEST_F(ItemChunks, TakingAChunkLeavesTheRest)
{
    std::wstring_view remaining = L"a</Item>b";
    EXPECT_EQ(Orvel::takeItemChunk(remaining), L"a</Item>");
    EXPECT_EQ(remaining, L"b");
}

TEST_F(ItemChunks, TakingTheLastChunkLeavesAnEmptyText)
{
    std::wstring_view remaining = L"</Item>";
    EXPECT_EQ(Orvel::takeItemChunk(remaining), L"</Item>");
    EXPECT_EQ(remaining, L"");
}

TEST_F(ItemChunks, TakingNoChunkLeavesTheTextUnchanged)
{
    const std::wstring_view text = L"<Item>";
    std::wstring_view remaining = text;
    EXPECT_EQ(Orvel::takeItemChunk(remaining), std::nullopt);
    EXPECT_EQ(remaining.data(), text.data());
    EXPECT_EQ(remaining.size(), text.size());
}

} // namespace
} // namespace Tests
