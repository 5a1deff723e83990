// The order of the reactor's virtual functions is part of the interface, because clients are built apart from the
// module.
#include "support/coordsys_test.h"
#include "support/virtual_table.h"

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

/// The slots after the destructor's in which a class that overrides one operation differs from the base.
std::set<std::size_t> overriddenSlots(const OrvelCoordinateSystemReactor& reactor)
{
    const OrvelCoordinateSystemReactor base;
    return Tests::differingSlots<kSlots>(&base, &reactor, kWillChange);
}

TEST(ReactorSlots, DestructorComesFirst)
{
    const OrvelCoordinateSystemReactor base;
    const NothingOverridden derived;
    EXPECT_EQ(Tests::differingSlots<kSlots>(&base, &derived, 0), (std::set<std::size_t>{0, 1}));
}

TEST(ReactorSlots, ClassWithoutOverridesHasTheBaseSlots)
{
    EXPECT_EQ(overriddenSlots(NothingOverridden()), std::set<std::size_t>());
}

TEST(ReactorSlots, QuestionFollowsTheDestructor)
{
    EXPECT_EQ(overriddenSlots(AsksOnly()), std::set{kWillChange});
}

TEST(ReactorSlots, ChangeNoticeFollowsTheQuestion)
{
    EXPECT_EQ(overriddenSlots(ChangedOnly()), std::set{kChanged});
}

TEST(ReactorSlots, VetoNoticeFollowsTheChangeNotice)
{
    EXPECT_EQ(overriddenSlots(VetoedOnly()), std::set{kVetoed});
}

TEST(ReactorSlots, TransformationNoticeComesLast)
{
    EXPECT_EQ(overriddenSlots(TransformationChangedOnly()), std::set{kTransformationChanged});
}

} // namespace
