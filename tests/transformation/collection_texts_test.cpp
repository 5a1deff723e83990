// Reads configuration texts and writes them again.
#include "support/case_name.h"
#include "support/platform_test.h"
#include "transformation/collection_texts.h"
#include "transformation/reference_item_parser.h"

namespace Tests {
namespace {

class CollectionTexts : public PlatformTest, public testing::WithParamInterface<CollectionTextCase> {
protected:
    const Ptr<ConfigCollection> collection = newCollection();

    void read() { collection->FromXmlString(std::wstring(GetParam().text).c_str()); }
};

std::vector<ItemFields> expectedItems(const CollectionTextCase& one)
{
    std::vector<ItemFields> items;
    for (const ExpectedItem& item : one.items)
        items.push_back(item.withVersion(L"1.0"));
    return items;
}

TEST_P(CollectionTexts, AreReadAsTheListedItems)
{
    read();
    EXPECT_EQ(readFields(*collection), expectedItems(GetParam()));
}

TEST_P(CollectionTexts, ReplaceEarlierItems)
{
    collection->Add(newCompleteItem().get());
    read();
    EXPECT_EQ(readFields(*collection), expectedItems(GetParam()));
}

TEST_P(CollectionTexts, AreWrittenFromTheListedItems)
{
    read();
    EXPECT_EQ(collection->ToXmlString(), Reference::writeConfiguration(expectedItems(GetParam())));
}

INSTANTIATE_TEST_SUITE_P(Markers, CollectionTexts, testing::ValuesIn(collectionMarkerTexts()), caseName);
INSTANTIATE_TEST_SUITE_P(Single, CollectionTexts, testing::ValuesIn(collectionSingleTexts()), caseName);
INSTANTIATE_TEST_SUITE_P(Several, CollectionTexts, testing::ValuesIn(collectionSeveralTexts()), caseName);

class CollectionReading : public PlatformTest {
protected:
    const Ptr<ConfigCollection> collection = newCollection();

    void SetUp() override
    {
        collection->Add(newCompleteItem(L"first").get());
        collection->Add(newCompleteItem(L"second").get());
    }
};

TEST_F(CollectionReading, NullTextEmptiesTheCollection)
{
    collection->FromXmlString(nullptr);
    EXPECT_EQ(collection->GetCount(), 0);
}

TEST_F(CollectionReading, EmptyTextEmptiesTheCollection)
{
    collection->FromXmlString(L"");
    EXPECT_EQ(collection->GetCount(), 0);
}

TEST_F(CollectionReading, ReadingATextTwiceGivesItsItemsOnce)
{
    const std::wstring text = collection->ToXmlString();
    collection->FromXmlString(text.c_str());
    collection->FromXmlString(text.c_str());
    EXPECT_EQ(collection->GetCount(), 2);
    EXPECT_EQ(collection->ToXmlString(), text);
}

TEST_F(CollectionReading, ThousandItemsAreReadInOrder)
{
    constexpr int kItems = 1000;
    collection->Clear();
    std::vector<ItemFields> expected;
    std::wstring text;
    for (int number = 0; number < kItems; ++number) {
        const std::wstring digits = std::to_wstring(number);
        text += L"<Item><SourceCs>s</SourceCs><TargetCs>t</TargetCs><Name>n" + digits +
                L"</Name><Type>2</Type><Note>o" + digits + L"</Note></Item>\r\n";
        expected.push_back({.source = L"s", .target = L"t", .name = L"n" + digits, .type = 2, .note = L"o" + digits});
    }
    collection->FromXmlString(text.c_str());
    EXPECT_EQ(collection->GetCount(), kItems);
    EXPECT_EQ(readFields(*collection), expected);
}

TEST_F(CollectionReading, ThousandItemsAreReadAsTheyWereWritten)
{
    collection->Clear();
    for (int number = 0; number < 1000; ++number)
        collection->Add(newCompleteItem(std::to_wstring(number).c_str()).get());
    const std::wstring text = collection->ToXmlString();
    const std::vector<ItemFields> items = readFields(*collection);
    collection->FromXmlString(text.c_str());
    EXPECT_EQ(readFields(*collection), items);
    EXPECT_EQ(collection->ToXmlString(), text);
}

TEST_F(CollectionReading, EveryPrefixGivesAnItemForEachClosingTag)
{
    const std::wstring text = collection->ToXmlString();
    const std::size_t firstEnd = text.find(L"</Item>") + 7;
    for (std::size_t length = 0; length <= text.size(); ++length) {
        collection->FromXmlString(text.substr(0, length).c_str());
        const int expected = length < firstEnd ? 0 : length < text.size() ? 1 : 2;
        EXPECT_EQ(collection->GetCount(), expected) << length << " characters";
    }
}

} // namespace
} // namespace Tests
