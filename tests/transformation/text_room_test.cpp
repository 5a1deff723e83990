// Texts are written into room that was made for them at once: one that grows takes three times its length for a while.
#include "support/platform_test.h"
#include "transformation/client_classes.h"

namespace Tests {
namespace {

/// More than a text can hold within itself and than its first growth would give it.
const std::wstring kLongNote(100, L'n');

/// How many more characters a type may have than "1".
constexpr std::size_t kSpareForAType = 5;

class TextRoom : public PlatformTest {
protected:
    static ItemFields fields(int type)
    {
        return {.source = L"a", .target = L"bb", .name = L"ccc", .type = type, .note = kLongNote, .version = L"1.0.0"};
    }
    static Ptr<ConfigItem> incompleteItem() { return newItem({.source = L"a", .note = kLongNote}); }
};

TEST_F(TextRoom, OfAnItem_IsForTheLongestType)
{
    for (const int type : {1, 2, -1, -32768}) {
        const std::wstring text = newItem(fields(type))->ToXmlString();
        EXPECT_EQ(text.capacity(), text.size() + 6 - std::to_wstring(type).size()) << type;
    }
}

TEST_F(TextRoom, OfAnIncompleteItem_IsNone)
{
    EXPECT_EQ(incompleteItem()->ToXmlString().capacity(), std::wstring().capacity());
}

TEST_F(TextRoom, OfACollection_IsThatOfItsItems)
{
    const Ptr<ConfigCollection> collection = newCollection();
    for (std::size_t items = 1; items <= 3; ++items) {
        collection->Add(newItem(fields(1)).get());
        const std::wstring text = collection->ToXmlString();
        EXPECT_EQ(text.capacity(), text.size() + items * kSpareForAType) << items;
    }
}

TEST_F(TextRoom, OfACollection_IsNoneForItsIncompleteItems)
{
    const Ptr<ConfigCollection> collection = newCollection();
    collection->Add(incompleteItem().get());
    EXPECT_EQ(collection->ToXmlString().capacity(), std::wstring().capacity());
    collection->Add(newItem(fields(1)).get());
    const std::wstring text = collection->ToXmlString();
    EXPECT_EQ(text.capacity(), text.size() + kSpareForAType);
}

} // namespace
} // namespace Tests
