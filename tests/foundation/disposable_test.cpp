#include <new>

#include "embedded/diagnostics/fault_injection.h"
#include "platform/foundation.h"
#include "support/platform_test.h"

namespace {

using Disposables = Tests::PlatformTest;

class Counted : public FqGuardDisposable {
public:
    explicit Counted(int& disposals) : disposals_(disposals) {}

protected:
    void Dispose() override
    {
        ++disposals_;
        delete this;
    }

private:
    int& disposals_;
};

class List : public FqDisposableCollection {};

TEST_F(Disposables, Object_StartsWithOneReferenceAndIsDeletedWithTheLast)
{
    int disposals = 0;
    auto* const object = new Counted(disposals);
    EXPECT_EQ(object->GetRefCount(), 1);
    EXPECT_EQ(object->AddRef(), 2);
    EXPECT_EQ(object->Release(), 1);
    EXPECT_EQ(disposals, 0);
    EXPECT_EQ(object->Release(), 0);
    EXPECT_EQ(disposals, 1);
}

TEST_F(Disposables, ObjectWithoutReferenceCounting_IsDeletedByItsCreator)
{
    int disposals = 0;
    auto* const object = new Counted(disposals);
    object->SetRefCountFlag(false);
    EXPECT_EQ(object->Release(), 0);
    EXPECT_EQ(disposals, 0);
    object->SetRefCountFlag(true);
    object->AddRef();
    EXPECT_EQ(object->Release(), 0);
    EXPECT_EQ(disposals, 1);
}

TEST_F(Disposables, Pointer_TakesOverTheReference)
{
    int disposals = 0;
    {
        const Ptr<Counted> first(new Counted(disposals));
        const Ptr<Counted> second = first; // NOLINT(performance-unnecessary-copy-initialization): the copy is tested
        EXPECT_EQ(second->GetRefCount(), 2);
    }
    EXPECT_EQ(disposals, 1);
}

TEST_F(Disposables, DetachedReference_BelongsToTheCaller)
{
    int disposals = 0;
    Ptr<Counted> pointer(new Counted(disposals));
    Counted* const object = pointer.Detach();
    EXPECT_FALSE(pointer);
    EXPECT_EQ(object->Release(), 0);
    EXPECT_EQ(disposals, 1);
}

TEST_F(Disposables, Collection_HoldsItsItemsUntilItIsCleared)
{
    int disposals = 0;
    const Ptr<List> list(new List);
    const Ptr<Counted> item(new Counted(disposals));
    EXPECT_EQ(list->Add(item.get()), 0);
    EXPECT_EQ(item->GetRefCount(), 2);
    EXPECT_EQ(list->GetCount(), 1);
    list->Clear();
    EXPECT_EQ(item->GetRefCount(), 1);
    EXPECT_EQ(list->GetCount(), 0);
}

TEST_F(Disposables, ReturnedItem_HasAReference)
{
    int disposals = 0;
    const Ptr<List> list(new List);
    {
        const Ptr<Counted> item(new Counted(disposals));
        list->Add(item.get());
    }
    FqDisposable* const item = list->GetItem(0);
    EXPECT_EQ(item->GetRefCount(), 2);
    EXPECT_EQ(item->Release(), 1);
}

TEST_F(Disposables, IndexOutOfRange_ReturnsNoItem)
{
    const Ptr<List> list(new List);
    EXPECT_EQ(list->GetItem(0), nullptr);
    EXPECT_EQ(list->GetItem(-1), nullptr);
    EXPECT_EQ(list->Add(nullptr), -1);
}

TEST_F(Disposables, DisposedCollection_ReleasesItsItems)
{
    int disposals = 0;
    {
        const Ptr<List> list(new List);
        const Ptr<Counted> item(new Counted(disposals));
        list->Add(item.get());
    }
    EXPECT_EQ(disposals, 1);
}

TEST_F(Disposables, InjectedFault_FailsTheAllocation)
{
    int disposals = 0;
    const Embedded::ResourceCounts before = Embedded::ResourceCounters::now();
    const Embedded::ScopedFault fault({.call = "FqGuardDisposable::FqGuardDisposable", .code = {}});
    EXPECT_THROW(static_cast<void>(new Counted(disposals)), std::bad_alloc); // no object is created
    EXPECT_EQ(Embedded::ResourceCounters::now(), before);
    EXPECT_EQ(disposals, 0);
}

TEST_F(Disposables, LivingObject_IsCounted)
{
    int disposals = 0;
    const Embedded::ResourceCounts before = Embedded::ResourceCounters::now();
    const Ptr<Counted> object(new Counted(disposals));
    EXPECT_EQ(Embedded::ResourceCounters::difference(before, Embedded::ResourceCounters::now()), "1 disposable object");
}

TEST_F(Disposables, Object_HasTheNameOfItsClass)
{
    int disposals = 0;
    const Ptr<Counted> object(new Counted(disposals));
    EXPECT_STREQ(object->GetClassName(), L"FqObject");
    EXPECT_STREQ(object->GetMultiByteClassName(), "FqObject");
    EXPECT_STREQ(object->GetNameSpace(), L"");
}

} // namespace
