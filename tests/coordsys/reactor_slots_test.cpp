// Clients are built apart from the module, so the order of the reactor's operations in its table of virtual functions
// is part of the interface. This reads the table as the Itanium C++ ABI lays it out, which g++ and clang++ follow on
// every system; the destructor has the first two slots there.
#include <array>
#include <cstddef>
#include <cstring>
#include <set>

#include "support/coordsys_test.h"

namespace {

using Tests::Cs::OrvelCoordinateSystemReactor;

constexpr std::size_t kSlots = 6;
constexpr std::size_t kWillChange = 2;
constexpr std::size_t kChanged = 3;
constexpr std::size_t kVetoed = 4;
constexpr std::size_t kTransformationChanged = 5;

struct AsksOnly : OrvelCoordinateSystemReactor {
    bool CoordinateSystemWillChange(QeDbDatabase*, const wchar_t* const) override { return false; }
};
struct ChangedOnly : OrvelCoordinateSystemReactor {
    void CoordinateSystemChanged(QeDbDatabase*, const wchar_t* const) override {}
};
struct VetoedOnly : OrvelCoordinateSystemReactor {
    void CoordinateSystemChangeVetoed(QeDbDatabase*, const wchar_t* const) override {}
};
struct TransformationChangedOnly : OrvelCoordinateSystemReactor {
    void CsTransformationChanged() override {}
};
struct NothingOverridden : OrvelCoordinateSystemReactor {};

using Table = std::array<const void*, kSlots>;

Table tableOf(const OrvelCoordinateSystemReactor& reactor)
{
    const void* const object = &reactor;
    const void* table = nullptr;
    std::memcpy(&table, object, sizeof table);
    Table slots{};
    std::memcpy(slots.data(), table, sizeof slots);
    return slots;
}

/// The slots after the destructor's in which a class that overrides one operation differs from the base.
std::set<std::size_t> overriddenSlots(const OrvelCoordinateSystemReactor& reactor)
{
    const Table base = tableOf(OrvelCoordinateSystemReactor());
    const Table derived = tableOf(reactor);
    std::set<std::size_t> slots;
    for (std::size_t slot = kWillChange; slot < kSlots; ++slot) {
        if (derived[slot] != base[slot])
            slots.insert(slot);
    }
    return slots;
}

TEST(ReactorSlots, TheDestructorComesFirst)
{
    const Table base = tableOf(OrvelCoordinateSystemReactor());
    const Table derived = tableOf(NothingOverridden());
    EXPECT_NE(base[0], derived[0]);
    EXPECT_NE(base[1], derived[1]);
}

TEST(ReactorSlots, WithNothingOverriddenTheOtherSlotsAreTheBases)
{
    EXPECT_EQ(overriddenSlots(NothingOverridden()), std::set<std::size_t>());
}

TEST(ReactorSlots, TheQuestionComesAfterTheDestructor)
{
    EXPECT_EQ(overriddenSlots(AsksOnly()), std::set{kWillChange});
}

TEST(ReactorSlots, TheNoticeOfAChangeComesNext)
{
    EXPECT_EQ(overriddenSlots(ChangedOnly()), std::set{kChanged});
}

TEST(ReactorSlots, TheNoticeOfAVetoComesNext)
{
    EXPECT_EQ(overriddenSlots(VetoedOnly()), std::set{kVetoed});
}

TEST(ReactorSlots, TheNoticeOfTheTransformationsComesLast)
{
    EXPECT_EQ(overriddenSlots(TransformationChangedOnly()), std::set{kTransformationChanged});
}

} // namespace
