// The order of the iterator's virtual operations is fixed.
#include <gtest/gtest.h>

#include "storage/resbuf_dictionary.h"
#include "support/virtual_table.h"

namespace Tests {
namespace {

using Orvel::CResbufDictionaryIterator;

constexpr std::size_t kSlots = 7;
constexpr std::size_t kAfterDestructor = 2;

struct Nothing final : CResbufDictionaryIterator {
    Nothing() : CResbufDictionaryIterator(nullptr) {}
};
struct NextOnly final : CResbufDictionaryIterator {
    NextOnly() : CResbufDictionaryIterator(nullptr) {}
    void Next() override {}
};
struct DoneOnly final : CResbufDictionaryIterator {
    DoneOnly() : CResbufDictionaryIterator(nullptr) {}
    bool Done() override { return true; }
};
struct GetResbufOnly final : CResbufDictionaryIterator {
    GetResbufOnly() : CResbufDictionaryIterator(nullptr) {}
    bool GetResbuf(resbuf*&) override { return false; }
};
struct GetKeyOnly final : CResbufDictionaryIterator {
    GetKeyOnly() : CResbufDictionaryIterator(nullptr) {}
    const wchar_t* GetKey() override { return L""; }
};
struct GetObjectIdOnly final : CResbufDictionaryIterator {
    GetObjectIdOnly() : CResbufDictionaryIterator(nullptr) {}
    QeDbObjectId GetObjectId(QeDbObjectId& id) override { return id; }
};

template <class Derived>
std::set<std::size_t> overridden(std::size_t first = kAfterDestructor)
{
    const CResbufDictionaryIterator base(nullptr);
    const Derived derived;
    return differingSlots<kSlots>(&base, &derived, first);
}

TEST(ResbufDictionaryIteratorSlots, DestructorComesFirst)
{
    EXPECT_EQ(overridden<Nothing>(0), (std::set<std::size_t>{0, 1}));
}

TEST(ResbufDictionaryIteratorSlots, OtherOperationsFollowInOrder)
{
    EXPECT_EQ(overridden<NextOnly>(), std::set<std::size_t>{2});
    EXPECT_EQ(overridden<DoneOnly>(), std::set<std::size_t>{3});
    EXPECT_EQ(overridden<GetResbufOnly>(), std::set<std::size_t>{4});
    EXPECT_EQ(overridden<GetKeyOnly>(), std::set<std::size_t>{5});
    EXPECT_EQ(overridden<GetObjectIdOnly>(), std::set<std::size_t>{6});
}

} // namespace
} // namespace Tests
