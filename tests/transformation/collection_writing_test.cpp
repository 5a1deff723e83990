// Writing the text of a collection.
#include "support/platform_test.h"
#include "transformation/client_classes.h"

namespace Tests {
namespace {

/// Passes an object of another class through a cast, as a client can. The collection uses it as a counted object.
ConfigItem* castToItem(ConfigCollection& stranger)
{
    return reinterpret_cast<ConfigItem*>(&stranger);
}

class CollectionWriting : public PlatformTest {
protected:
    const Ptr<ConfigCollection> collection = newCollection();

    void add(const ItemFields& fields) { collection->Add(newItem(fields).get()); }
};

/// An item that clears its collection while it is written. Then only the writer holds a reference to it.
class ClearingItem final : public ClientItem {
public:
    ClearingItem(ConfigCollection& collection, bool& alive) : collection_(&collection), alive_(&alive) {}
    ~ClearingItem() override { *alive_ = false; }

    std::wstring ToXmlString() override
    {
        bool& alive = *alive_;
        collection_->Clear();
        return alive ? L"alive" : L"released";
    }

private:
    ConfigCollection* collection_;
    bool* alive_;
};

constexpr const wchar_t* kFirst = L"<Item><Version>1.0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs>"
                                  L"<Name>first</Name><Type>1</Type><Note>d</Note></Item>";
constexpr const wchar_t* kSecond = L"<Item><Version>1.0</Version><SourceCs>a</SourceCs><TargetCs>b</TargetCs>"
                                   L"<Name>second</Name><Type>1</Type><Note>d</Note></Item>";

TEST_F(CollectionWriting, EmptyCollectionIsWrittenAsAnEmptyText)
{
    EXPECT_EQ(collection->ToXmlString(), L"");
}

TEST_F(CollectionWriting, ItemIsKeptAliveWhileItIsWritten)
{
    bool alive = true;
    Ptr<ConfigItem> item(new ClearingItem(*collection.get(), alive));
    collection->Add(item.get());
    item = Ptr<ConfigItem>();
    EXPECT_EQ(collection->ToXmlString(), L"alive");
    EXPECT_FALSE(alive);
}

TEST_F(CollectionWriting, ItemsAreWrittenInOrderWithoutSeparators)
{
    collection->Add(newCompleteItem(L"second").get());
    collection->Add(newCompleteItem(L"first").get());
    EXPECT_EQ(collection->ToXmlString(), std::wstring(kSecond) + kFirst);
}

TEST_F(CollectionWriting, IncompleteItemsAreOmitted)
{
    add({.target = L"b", .name = L"c", .type = 1});
    collection->Add(newCompleteItem(L"first").get());
    add({.source = L"a", .name = L"c", .type = 1});
    add({.source = L"a", .target = L"b", .type = 1});
    collection->Add(newCompleteItem(L"second").get());
    add({.source = L"a", .target = L"b", .name = L"c"});
    EXPECT_EQ(collection->ToXmlString(), std::wstring(kFirst) + kSecond);
}

TEST_F(CollectionWriting, OnlyIncompleteItemsGiveAnEmptyText)
{
    add({});
    add({.source = L"a"});
    EXPECT_EQ(collection->ToXmlString(), L"");
    EXPECT_EQ(collection->GetCount(), 2);
}

TEST_F(CollectionWriting, ItemThatWasAddedTwiceIsWrittenTwice)
{
    const Ptr<ConfigItem> item = newCompleteItem(L"first");
    collection->Add(item.get());
    collection->Add(item.get());
    EXPECT_EQ(collection->ToXmlString(), std::wstring(kFirst) + kFirst);
}

TEST_F(CollectionWriting, ItemIsWrittenWithItsCurrentFields)
{
    const Ptr<ConfigItem> item = newItem();
    collection->Add(item.get());
    setFields(*item, readFields(*newCompleteItem(L"second")));
    EXPECT_EQ(collection->ToXmlString(), kSecond);
}

TEST_F(CollectionWriting, ClientItemWritesItsOwnText)
{
    collection->Add(newCompleteItem(L"first").get());
    collection->Add(Ptr<ConfigItem>(new ClientItem).get());
    collection->Add(newCompleteItem(L"second").get());
    EXPECT_EQ(collection->ToXmlString(), std::wstring(kFirst) + L"written by the client" + kSecond);
}

TEST_F(CollectionWriting, EntryOfAnotherClassMakesTheTextEmpty)
{
    const Ptr<ConfigCollection> stranger = newCollection();
    collection->Add(newCompleteItem(L"first").get());
    collection->Add(castToItem(*stranger));
    collection->Add(newCompleteItem(L"second").get());
    EXPECT_EQ(collection->ToXmlString(), L"");
    EXPECT_EQ(collection->GetCount(), 3);
}

TEST_F(CollectionWriting, WritingKeepsTheReferenceCounts)
{
    const Ptr<ConfigItem> item = newCompleteItem();
    collection->Add(item.get());
    static_cast<void>(collection->ToXmlString()); // only its side effects matter here
    EXPECT_EQ(item->GetRefCount(), 2);
}

TEST_F(CollectionWriting, WritingTwiceGivesTheSameText)
{
    collection->Add(newCompleteItem().get());
    const std::wstring text = collection->ToXmlString();
    EXPECT_EQ(collection->ToXmlString(), text);
}

} // namespace
} // namespace Tests
