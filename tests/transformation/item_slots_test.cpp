// The order of the virtual functions of items and collections is part of the interface, because clients are built apart
// from the module. The foundation's functions come first.
#include "platform/foundation.h"
#include "support/platform_test.h"
#include "support/virtual_table.h"
#include "transformation/client_classes.h"

namespace Tests {
namespace {

using Slots = std::set<std::size_t>;

// The destructor has two slots, 4 and 5.
constexpr std::size_t kItemSlots = 25;
constexpr std::size_t kCollectionSlots = 17;

/// The class `Base` with each of the foundation's operations overridden, in classes of their own.
template <class Base>
struct Foundation {
    struct ClassIdOnly : Base {
        int GetClassId() override { return 1; }
    };
    struct ClassNameOnly : Base {
        const wchar_t* GetClassName() override { return L""; }
    };
    struct MultiByteClassNameOnly : Base {
        const char* GetMultiByteClassName() override { return ""; }
    };
    struct NameSpaceOnly : Base {
        const wchar_t* GetNameSpace() override { return L""; }
    };
    struct DestructorOnly : Base {
        ~DestructorOnly() override = default;
    };
    struct RefCountOnly : Base {
        int GetRefCount() override { return 1; }
    };
    struct AddRefOnly : Base {
        int AddRef() override { return 1; }
    };
    struct ReleaseOnly : Base {
        int Release() override { return 0; }
    };
    struct FlagOnly : Base {
        void SetRefCountFlag(bool) override {}
    };
    struct DisposeOnly : Base {
        void Dispose() override {}
    };
};

// Objects of these classes are on the stack, where nothing disposes them.
struct SetSourceCsOnly : ClientItem {
    void SetSourceCs(const wchar_t*) override {}
};
struct GetSourceCsOnly : ClientItem {
    const wchar_t* GetSourceCs() override { return L"a"; }
};
struct SetTargetCsOnly : ClientItem {
    void SetTargetCs(const wchar_t*) override {}
};
struct GetTargetCsOnly : ClientItem {
    const wchar_t* GetTargetCs() override { return L"a"; }
};
struct SetNameOnly : ClientItem {
    void SetName(const wchar_t*) override {}
};
struct GetNameOnly : ClientItem {
    const wchar_t* GetName() override { return L"a"; }
};
struct SetTypeOnly : ClientItem {
    void SetType(int) override {}
};
struct GetTypeOnly : ClientItem {
    int GetType() override { return 1; }
};
struct SetNoteOnly : ClientItem {
    void SetNote(const wchar_t*) override {}
};
struct GetNoteOnly : ClientItem {
    const wchar_t* GetNote() override { return L"a"; }
};
struct SetVersionOnly : ClientItem {
    void SetVersion(const wchar_t*) override {}
};
struct GetVersionOnly : ClientItem {
    const wchar_t* GetVersion() override { return L"a"; }
};
struct ItemToXmlStringOnly : ClientItem {
    std::wstring ToXmlString() override { return L"a"; }
};
struct ItemFromXmlStringOnly : ClientItem {
    void FromXmlString(const wchar_t*) override {}
};

struct AddOnly : ClientCollection {
    void Add(ConfigItem*) override {}
};
struct ClearOnly : ClientCollection {
    void Clear() override {}
};
struct GetCountOnly : ClientCollection {
    int GetCount() override { return 1; }
};
struct GetItemOnly : ClientCollection {
    FqDisposable* GetItem(int) override { return this; }
};
struct CollectionToXmlStringOnly : ClientCollection {
    std::wstring ToXmlString() override { return L"a"; }
};
struct CollectionFromXmlStringOnly : ClientCollection {
    void FromXmlString(const wchar_t*) override {}
};

/// The slots in which the class differs from the plain one, except the destructor's, which always differ.
template <class Derived, class Plain, std::size_t slots>
Slots overridden()
{
    const Plain plain;
    const Derived derived;
    Slots differing = differingSlots<slots>(&plain, &derived, 0);
    EXPECT_EQ(differing.erase(4) + differing.erase(5), 2U);
    return differing;
}

template <class Derived>
Slots itemSlots()
{
    return overridden<Derived, ClientItem, kItemSlots>();
}

template <class Derived>
Slots collectionSlots()
{
    return overridden<Derived, ClientCollection, kCollectionSlots>();
}

template <class Plain, std::size_t slots>
void expectFoundationFirst()
{
    using Overridden = Foundation<Plain>;
    EXPECT_EQ((overridden<typename Overridden::ClassIdOnly, Plain, slots>()), Slots{0});
    EXPECT_EQ((overridden<typename Overridden::ClassNameOnly, Plain, slots>()), Slots{1});
    EXPECT_EQ((overridden<typename Overridden::MultiByteClassNameOnly, Plain, slots>()), Slots{2});
    EXPECT_EQ((overridden<typename Overridden::NameSpaceOnly, Plain, slots>()), Slots{3});
    EXPECT_EQ((overridden<typename Overridden::DestructorOnly, Plain, slots>()), Slots{});
    EXPECT_EQ((overridden<typename Overridden::RefCountOnly, Plain, slots>()), Slots{6});
    EXPECT_EQ((overridden<typename Overridden::AddRefOnly, Plain, slots>()), Slots{7});
    EXPECT_EQ((overridden<typename Overridden::ReleaseOnly, Plain, slots>()), Slots{8});
    EXPECT_EQ((overridden<typename Overridden::FlagOnly, Plain, slots>()), Slots{9});
    EXPECT_EQ((overridden<typename Overridden::DisposeOnly, Plain, slots>()), Slots{10});
}

class ConfigItemSlots : public PlatformTest {};
class ConfigCollectionSlots : public PlatformTest {};

TEST_F(ConfigItemSlots, FoundationOperationsComeFirst)
{
    expectFoundationFirst<ClientItem, kItemSlots>();
}

TEST_F(ConfigItemSlots, FieldsFollowWithEachSetterBeforeItsGetter)
{
    EXPECT_EQ(itemSlots<SetSourceCsOnly>(), Slots{11});
    EXPECT_EQ(itemSlots<GetSourceCsOnly>(), Slots{12});
    EXPECT_EQ(itemSlots<SetTargetCsOnly>(), Slots{13});
    EXPECT_EQ(itemSlots<GetTargetCsOnly>(), Slots{14});
    EXPECT_EQ(itemSlots<SetNameOnly>(), Slots{15});
    EXPECT_EQ(itemSlots<GetNameOnly>(), Slots{16});
    EXPECT_EQ(itemSlots<SetTypeOnly>(), Slots{17});
    EXPECT_EQ(itemSlots<GetTypeOnly>(), Slots{18});
    EXPECT_EQ(itemSlots<SetNoteOnly>(), Slots{19});
    EXPECT_EQ(itemSlots<GetNoteOnly>(), Slots{20});
    EXPECT_EQ(itemSlots<SetVersionOnly>(), Slots{21});
    EXPECT_EQ(itemSlots<GetVersionOnly>(), Slots{22});
}

TEST_F(ConfigItemSlots, WritingAndReadingComeLast)
{
    EXPECT_EQ(itemSlots<ItemToXmlStringOnly>(), Slots{23});
    EXPECT_EQ(itemSlots<ItemFromXmlStringOnly>(), Slots{24});
}

TEST_F(ConfigCollectionSlots, FoundationOperationsComeFirst)
{
    expectFoundationFirst<ClientCollection, kCollectionSlots>();
}

TEST_F(ConfigCollectionSlots, ListOperationsFollow)
{
    EXPECT_EQ(collectionSlots<AddOnly>(), Slots{11});
    EXPECT_EQ(collectionSlots<ClearOnly>(), Slots{12});
    EXPECT_EQ(collectionSlots<GetCountOnly>(), Slots{13});
    EXPECT_EQ(collectionSlots<GetItemOnly>(), Slots{14});
}

TEST_F(ConfigCollectionSlots, WritingAndReadingComeLast)
{
    EXPECT_EQ(collectionSlots<CollectionToXmlStringOnly>(), Slots{15});
    EXPECT_EQ(collectionSlots<CollectionFromXmlStringOnly>(), Slots{16});
}

} // namespace
} // namespace Tests
