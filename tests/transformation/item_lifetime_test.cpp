// Who holds an item or a collection, and for how long.
#include "embedded/foundation/faults.h"
#include "support/platform_test.h"
#include "transformation/config_items.h"

namespace Tests {
namespace {

long objects()
{
    return Embedded::Audit::now()[Embedded::Held::disposableObject];
}

class ItemLifetime : public PlatformTest {
protected:
    const long before = objects();

    long made() const { return objects() - before; }
};

TEST_F(ItemLifetime, ANewItemIsItsMakers)
{
    ConfigItem* const item = ConfigItem::CreateInstance();
    EXPECT_EQ(item->GetRefCount(), 1);
    EXPECT_EQ(made(), 1);
    EXPECT_EQ(item->Release(), 0);
    EXPECT_EQ(made(), 0);
}

TEST_F(ItemLifetime, ANewCollectionIsItsMakersWithItsListInside)
{
    ConfigCollection* const collection = ConfigCollection::CreateInstance();
    EXPECT_EQ(collection->GetRefCount(), 1);
    EXPECT_EQ(made(), 2);
    EXPECT_EQ(collection->Release(), 0);
    EXPECT_EQ(made(), 0);
}

TEST_F(ItemLifetime, AReferenceIsAddedAndReleased)
{
    ConfigItem* const item = ConfigItem::CreateInstance();
    EXPECT_EQ(item->AddRef(), 2);
    EXPECT_EQ(item->AddRef(), 3);
    EXPECT_EQ(item->Release(), 2);
    EXPECT_EQ(item->GetRefCount(), 2);
    EXPECT_EQ(item->Release(), 1);
    EXPECT_EQ(made(), 1);
    EXPECT_EQ(item->Release(), 0);
}

TEST_F(ItemLifetime, APointerHoldsAnItem)
{
    {
        const Ptr<ConfigItem> first(ConfigItem::CreateInstance());
        Ptr<ConfigItem> second = first;
        EXPECT_EQ(first->GetRefCount(), 2);
        second = Ptr<ConfigItem>();
        EXPECT_EQ(first->GetRefCount(), 1);
    }
    EXPECT_EQ(made(), 0);
}

TEST_F(ItemLifetime, WithTheFlagOffAnItemOutlivesItsLastReference)
{
    ConfigItem* const item = ConfigItem::CreateInstance();
    item->SetRefCountFlag(false);
    EXPECT_EQ(item->Release(), 0);
    EXPECT_EQ(made(), 1);
    item->SetName(L"still there");
    EXPECT_STREQ(item->GetName(), L"still there");
    item->Dispose();
    EXPECT_EQ(made(), 0);
}

TEST_F(ItemLifetime, WithTheFlagOffACollectionOutlivesItsLastReference)
{
    ConfigCollection* const collection = ConfigCollection::CreateInstance();
    collection->SetRefCountFlag(false);
    EXPECT_EQ(collection->Release(), 0);
    collection->Add(newItem().get());
    EXPECT_EQ(collection->GetCount(), 1);
    collection->Dispose();
    EXPECT_EQ(made(), 0);
}

TEST_F(ItemLifetime, ADisposedItemIsGoneWhateverItsCount)
{
    ConfigItem* const item = ConfigItem::CreateInstance();
    item->AddRef();
    item->Dispose();
    EXPECT_EQ(made(), 0);
}

TEST_F(ItemLifetime, ADisposedCollectionReleasesItsItems)
{
    const Ptr<ConfigItem> item = newItem();
    ConfigCollection* const collection = ConfigCollection::CreateInstance();
    collection->Add(item.get());
    collection->AddRef();
    collection->Dispose();
    EXPECT_EQ(item->GetRefCount(), 1);
    EXPECT_EQ(made(), 1);
}

TEST_F(ItemLifetime, ACollectionHoldsAReferenceToEachItem)
{
    const Ptr<ConfigCollection> collection = newCollection();
    const Ptr<ConfigItem> item = newItem();
    collection->Add(item.get());
    EXPECT_EQ(item->GetRefCount(), 2);
    collection->Clear();
    EXPECT_EQ(item->GetRefCount(), 1);
    EXPECT_EQ(collection->GetCount(), 0);
}

TEST_F(ItemLifetime, AnItemLivesAsLongAsItsCollection)
{
    {
        const Ptr<ConfigCollection> collection = newCollection();
        collection->Add(newCompleteItem().get());
        EXPECT_EQ(made(), 3);
        EXPECT_EQ(itemAt(*collection, 0)->GetRefCount(), 2);
    }
    EXPECT_EQ(made(), 0);
}

TEST_F(ItemLifetime, AnItemThatIsAddedTwiceIsHeldTwice)
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

TEST_F(ItemLifetime, AnItemInTwoCollectionsIsHeldByBoth)
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

TEST_F(ItemLifetime, AnItemIsHandedOutWithAReference)
{
    const Ptr<ConfigCollection> collection = newCollection();
    const Ptr<ConfigItem> item = newItem();
    collection->Add(item.get());
    FqDisposable* const handedOut = collection->GetItem(0);
    EXPECT_EQ(handedOut, item.get());
    EXPECT_EQ(item->GetRefCount(), 3);
    EXPECT_EQ(handedOut->Release(), 2);
}

TEST_F(ItemLifetime, OutOfRangeNothingIsHandedOut)
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

TEST_F(ItemLifetime, ReadingReleasesTheItemsThatWereThere)
{
    const Ptr<ConfigCollection> collection = newCollection();
    const Ptr<ConfigItem> item = newItem();
    collection->Add(item.get());
    collection->FromXmlString(L"</Item>");
    EXPECT_EQ(item->GetRefCount(), 1);
    EXPECT_EQ(collection->GetCount(), 1);
}

TEST_F(ItemLifetime, AnItemThatWasReadIsHeldByItsCollectionAlone)
{
    const Ptr<ConfigCollection> collection = newCollection();
    collection->FromXmlString(L"</Item></Item>");
    EXPECT_EQ(made(), 4);
    const Ptr<ConfigItem> item = itemAt(*collection, 1);
    EXPECT_EQ(item->GetRefCount(), 2);
    collection->Clear();
    EXPECT_EQ(item->GetRefCount(), 1);
    EXPECT_EQ(made(), 3);
}

class WithoutMemory : public ItemLifetime {
protected:
    static Embedded::FaultPlan construction(std::size_t occurrence)
    {
        return {.call = "FqGuardDisposable::FqGuardDisposable", .occurrence = occurrence};
    }
};

TEST_F(WithoutMemory, ThereIsNoItem)
{
    const Embedded::ScopedFault fault(construction(1));
    EXPECT_EQ(ConfigItem::CreateInstance(), nullptr);
    EXPECT_EQ(made(), 0);
}

TEST_F(WithoutMemory, ThereIsNoCollection)
{
    const Embedded::ScopedFault fault(construction(1));
    EXPECT_EQ(ConfigCollection::CreateInstance(), nullptr);
    EXPECT_EQ(made(), 0);
}

TEST_F(WithoutMemory, ThereIsNoCollectionWithoutItsListEither)
{
    const Embedded::ScopedFault fault(construction(2));
    EXPECT_EQ(ConfigCollection::CreateInstance(), nullptr);
    EXPECT_EQ(Embedded::Faults::struck(), 1U);
    EXPECT_EQ(made(), 0);
}

TEST_F(WithoutMemory, TheNextItemIsThereAgain)
{
    const Embedded::ScopedFault fault(construction(1));
    EXPECT_EQ(ConfigItem::CreateInstance(), nullptr);
    EXPECT_TRUE(newItem());
}

TEST_F(ItemLifetime, ACollectionReadsATextThatBelongsToOneOfItsItems)
{
    const Ptr<ConfigCollection> collection = newCollection();
    {
        const Ptr<ConfigItem> item = newCompleteItem();
        item->SetNote(L"<Item><SourceCs>S</SourceCs><TargetCs>T</TargetCs><Name>N</Name><Type>1</Type>"
                      L"<Note></Note></Item>");
        collection->Add(item.get());
    }
    collection->FromXmlString(itemAt(*collection, 0)->GetNote()); // nobody else holds the item
    ASSERT_EQ(collection->GetCount(), 1);
    EXPECT_STREQ(itemAt(*collection, 0)->GetSourceCs(), L"S");
    EXPECT_EQ(made(), 3) << "the former item is gone";
}

TEST_F(WithoutMemory, ReadingLeavesTheItemsThatItCameTo)
{
    const Ptr<ConfigCollection> collection = newCollection();
    collection->Add(newCompleteItem().get());
    const Embedded::ScopedFault fault(construction(3));
    EXPECT_THROW(collection->FromXmlString(L"</Item></Item></Item>"), std::bad_alloc);
    EXPECT_EQ(collection->GetCount(), 2);
}

} // namespace
} // namespace Tests
