// Reference counts and lifetime of items and collections.
#include <algorithm>

#include "embedded/diagnostics/fault_injection.h"
#include "support/platform_test.h"
#include "transformation/client_classes.h"

namespace Tests {
namespace {

long countObjects()
{
    return Embedded::ResourceCounters::now()[Embedded::ResourceKind::disposableObject];
}

class ItemLifetime : public PlatformTest {
protected:
    const long before = countObjects();

    long countNewObjects() const { return countObjects() - before; }
};

TEST_F(ItemLifetime, NewItemHasOneReference)
{
    ConfigItem* const item = ConfigItem::CreateInstance();
    EXPECT_EQ(item->GetRefCount(), 1);
    EXPECT_EQ(countNewObjects(), 1);
    EXPECT_EQ(item->Release(), 0);
    EXPECT_EQ(countNewObjects(), 0);
}

TEST_F(ItemLifetime, NewCollectionHasOneReferenceAndItsList)
{
    ConfigCollection* const collection = ConfigCollection::CreateInstance();
    EXPECT_EQ(collection->GetRefCount(), 1);
    EXPECT_EQ(countNewObjects(), 2);
    EXPECT_EQ(collection->Release(), 0);
    EXPECT_EQ(countNewObjects(), 0);
}

TEST_F(ItemLifetime, ReferencesAreAddedAndReleased)
{
    ConfigItem* const item = ConfigItem::CreateInstance();
    EXPECT_EQ(item->AddRef(), 2);
    EXPECT_EQ(item->AddRef(), 3);
    EXPECT_EQ(item->Release(), 2);
    EXPECT_EQ(item->GetRefCount(), 2);
    EXPECT_EQ(item->Release(), 1);
    EXPECT_EQ(countNewObjects(), 1);
    EXPECT_EQ(item->Release(), 0);
}

TEST_F(ItemLifetime, PointerHoldsAReference)
{
    {
        const Ptr<ConfigItem> first(ConfigItem::CreateInstance());
        Ptr<ConfigItem> second = first;
        EXPECT_EQ(first->GetRefCount(), 2);
        second = Ptr<ConfigItem>();
        EXPECT_EQ(first->GetRefCount(), 1);
    }
    EXPECT_EQ(countNewObjects(), 0);
}

TEST_F(ItemLifetime, ItemWithTheFlagOffOutlivesItsLastReference)
{
    ConfigItem* const item = ConfigItem::CreateInstance();
    item->SetRefCountFlag(false);
    EXPECT_EQ(item->Release(), 0);
    EXPECT_EQ(countNewObjects(), 1);
    item->SetName(L"still there");
    EXPECT_STREQ(item->GetName(), L"still there");
    item->Dispose();
    EXPECT_EQ(countNewObjects(), 0);
}

TEST_F(ItemLifetime, CollectionWithTheFlagOffOutlivesItsLastReference)
{
    ConfigCollection* const collection = ConfigCollection::CreateInstance();
    collection->SetRefCountFlag(false);
    EXPECT_EQ(collection->Release(), 0);
    collection->Add(newItem().get());
    EXPECT_EQ(collection->GetCount(), 1);
    collection->Dispose();
    EXPECT_EQ(countNewObjects(), 0);
}

TEST_F(ItemLifetime, DisposedItemIsDeletedForAnyCount)
{
    ConfigItem* const item = ConfigItem::CreateInstance();
    item->AddRef();
    item->Dispose();
    EXPECT_EQ(countNewObjects(), 0);
}

TEST_F(ItemLifetime, DisposedCollectionReleasesItsItems)
{
    const Ptr<ConfigItem> item = newItem();
    ConfigCollection* const collection = ConfigCollection::CreateInstance();
    collection->Add(item.get());
    collection->AddRef();
    collection->Dispose();
    EXPECT_EQ(item->GetRefCount(), 1);
    EXPECT_EQ(countNewObjects(), 1);
}

TEST_F(ItemLifetime, CollectionHoldsAReferenceToEachItem)
{
    const Ptr<ConfigCollection> collection = newCollection();
    const Ptr<ConfigItem> item = newItem();
    collection->Add(item.get());
    EXPECT_EQ(item->GetRefCount(), 2);
    collection->Clear();
    EXPECT_EQ(item->GetRefCount(), 1);
    EXPECT_EQ(collection->GetCount(), 0);
}

TEST_F(ItemLifetime, ItemLivesAsLongAsItsCollection)
{
    {
        const Ptr<ConfigCollection> collection = newCollection();
        collection->Add(newCompleteItem().get());
        EXPECT_EQ(countNewObjects(), 3);
        EXPECT_EQ(itemAt(*collection, 0)->GetRefCount(), 2);
    }
    EXPECT_EQ(countNewObjects(), 0);
}

TEST_F(ItemLifetime, ItemThatIsAddedTwiceHasTwoReferences)
{
    const Ptr<ConfigCollection> collection = newCollection();
    const Ptr<ConfigItem> item = newItem();
    collection->Add(item.get());
    collection->Add(item.get());
    EXPECT_EQ(collection->GetCount(), 2);
    EXPECT_EQ(item->GetRefCount(), 3);
    EXPECT_EQ(itemAt(*collection, 0).get(), itemAt(*collection, 1).get());
    collection->Clear();
    EXPECT_EQ(item->GetRefCount(), 1);
}

TEST_F(ItemLifetime, ItemInTwoCollectionsHasAReferenceFromEach)
{
    const Ptr<ConfigItem> item = newItem();
    const Ptr<ConfigCollection> first = newCollection();
    {
        const Ptr<ConfigCollection> second = newCollection();
        first->Add(item.get());
        second->Add(item.get());
        EXPECT_EQ(item->GetRefCount(), 3);
    }
    EXPECT_EQ(item->GetRefCount(), 2);
    item->SetName(L"one and the same");
    EXPECT_STREQ(itemAt(*first, 0)->GetName(), L"one and the same");
}

TEST_F(ItemLifetime, GetItemAddsAReference)
{
    const Ptr<ConfigCollection> collection = newCollection();
    const Ptr<ConfigItem> item = newItem();
    collection->Add(item.get());
    FqDisposable* const handedOut = collection->GetItem(0);
    EXPECT_EQ(handedOut, item.get());
    EXPECT_EQ(item->GetRefCount(), 3);
    EXPECT_EQ(handedOut->Release(), 2);
}

TEST_F(ItemLifetime, GetItemReturnsNullOutOfRange)
{
    const Ptr<ConfigCollection> collection = newCollection();
    EXPECT_EQ(collection->GetItem(0), nullptr);
    collection->Add(newItem().get());
    EXPECT_EQ(collection->GetItem(-1), nullptr);
    EXPECT_EQ(collection->GetItem(1), nullptr);
}

TEST_F(ItemLifetime, NullIsNotAdded)
{
    const Ptr<ConfigCollection> collection = newCollection();
    collection->Add(nullptr);
    EXPECT_EQ(collection->GetCount(), 0);
}

TEST_F(ItemLifetime, ClearingAnEmptyCollectionDoesNothing)
{
    const Ptr<ConfigCollection> collection = newCollection();
    collection->Clear();
    EXPECT_EQ(collection->GetCount(), 0);
}

TEST_F(ItemLifetime, ReadingReleasesTheEarlierItems)
{
    const Ptr<ConfigCollection> collection = newCollection();
    const Ptr<ConfigItem> item = newItem();
    collection->Add(item.get());
    collection->FromXmlString(L"</Item>");
    EXPECT_EQ(item->GetRefCount(), 1);
    EXPECT_EQ(collection->GetCount(), 1);
}

TEST_F(ItemLifetime, OnlyTheCollectionHoldsAnItemThatItRead)
{
    const Ptr<ConfigCollection> collection = newCollection();
    collection->FromXmlString(L"</Item></Item>");
    EXPECT_EQ(countNewObjects(), 4);
    const Ptr<ConfigItem> item = itemAt(*collection, 1);
    EXPECT_EQ(item->GetRefCount(), 2);
    collection->Clear();
    EXPECT_EQ(item->GetRefCount(), 1);
    EXPECT_EQ(countNewObjects(), 3);
}

class WithoutMemory : public ItemLifetime {
protected:
    static Embedded::FaultPlan construction(std::size_t occurrence)
    {
        return {.call = "FqGuardDisposable::FqGuardDisposable", .occurrence = occurrence};
    }
};

TEST_F(WithoutMemory, CreateInstanceReturnsNoItem)
{
    const Embedded::ScopedFault fault(construction(1));
    EXPECT_EQ(ConfigItem::CreateInstance(), nullptr);
    EXPECT_EQ(countNewObjects(), 0);
}

TEST_F(WithoutMemory, CreateInstanceReturnsNoCollection)
{
    const Embedded::ScopedFault fault(construction(1));
    EXPECT_EQ(ConfigCollection::CreateInstance(), nullptr);
    EXPECT_EQ(countNewObjects(), 0);
}

TEST_F(WithoutMemory, CreateInstanceReturnsNoCollectionWithoutItsList)
{
    const Embedded::ScopedFault fault(construction(2));
    EXPECT_EQ(ConfigCollection::CreateInstance(), nullptr);
    EXPECT_EQ(Embedded::FaultInjection::failedCalls(), 1U);
    EXPECT_EQ(countNewObjects(), 0);
}

TEST_F(WithoutMemory, NextItemIsCreated)
{
    const Embedded::ScopedFault fault(construction(1));
    EXPECT_EQ(ConfigItem::CreateInstance(), nullptr);
    EXPECT_TRUE(newItem());
}

/// A client's item that blanks a text when it is destroyed.
class TextOwner final : public ClientItem {
public:
    explicit TextOwner(std::wstring& text) : text_(text) {}
    ~TextOwner() override { std::ranges::fill(text_, L' '); }

private:
    std::wstring& text_;
};

TEST_F(ItemLifetime, CollectionReadsATextThatOneOfItsItemsOwns)
{
    for (int place = 0; place < 3; ++place) {
        std::wstring text = newCompleteItem(L"first")->ToXmlString() + newCompleteItem(L"second")->ToXmlString();
        const Ptr<ConfigCollection> collection = newCollection();
        for (int index = 0; index < 3; ++index) {
            const Ptr<ConfigItem> item = index == place ? Ptr<ConfigItem>(new TextOwner(text)) : newCompleteItem();
            collection->Add(item.get());
        }
        collection->FromXmlString(text.c_str());
        ASSERT_EQ(collection->GetCount(), 2) << place;
        EXPECT_STREQ(itemAt(*collection, 1)->GetName(), L"second") << place;
        EXPECT_EQ(text.find_first_not_of(L' '), std::wstring::npos) << "the earlier items are destroyed";
    }
}

TEST_F(WithoutMemory, ReadingKeepsTheItemsBeforeTheFailure)
{
    const Ptr<ConfigCollection> collection = newCollection();
    collection->Add(newCompleteItem().get());
    const Embedded::ScopedFault fault(construction(3));
    EXPECT_THROW(collection->FromXmlString(L"</Item></Item></Item>"), std::bad_alloc);
    EXPECT_EQ(collection->GetCount(), 2);
}

} // namespace
} // namespace Tests
