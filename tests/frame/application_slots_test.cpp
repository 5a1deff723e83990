// The order of the application object's operations in its table of virtual functions is fixed.
#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>

#include "frame/application.h"
#include "support/virtual_table.h"

namespace Tests {
namespace {

constexpr std::size_t kApplicationSlots = 2;
constexpr std::size_t kLoadSlot = 0;
constexpr std::size_t kUnloadSlot = 1;

struct PlainApplication final : COrvelCoordsysCoreApp {};
struct LoadOnly final : COrvelCoordsysCoreApp {
    Qeapp::ErrorStatus load() override { return Qeapp::eOk; }
};
struct UnloadOnly final : COrvelCoordsysCoreApp {
    Qeapp::ErrorStatus unload() override { return Qeapp::eOk; }
};

VirtualTable<kApplicationSlots> tableOf(const COrvelCoordsysCoreApp& object)
{
    return readVirtualTable<kApplicationSlots>(&object);
}

TEST(ApplicationSlots, TheObjectHasNoData)
{
    EXPECT_EQ(sizeof(COrvelCoordsysCoreApp), sizeof(void*));
    EXPECT_FALSE(std::has_virtual_destructor_v<COrvelCoordsysCoreApp>);
}

TEST(ApplicationSlots, LoadComesFirst)
{
    const VirtualTable<kApplicationSlots> base = tableOf(PlainApplication());
    const VirtualTable<kApplicationSlots> derived = tableOf(LoadOnly());
    EXPECT_NE(derived[kLoadSlot], base[kLoadSlot]);
    EXPECT_EQ(derived[kUnloadSlot], base[kUnloadSlot]);
}

TEST(ApplicationSlots, UnloadComesNext)
{
    const VirtualTable<kApplicationSlots> base = tableOf(PlainApplication());
    const VirtualTable<kApplicationSlots> derived = tableOf(UnloadOnly());
    EXPECT_EQ(derived[kLoadSlot], base[kLoadSlot]);
    EXPECT_NE(derived[kUnloadSlot], base[kUnloadSlot]);
}

TEST(ApplicationSlots, TheModulesOwnObject_HasTheOperationsOfTheClass)
{
    EXPECT_EQ(tableOf(Orvel::moduleApplication()), tableOf(PlainApplication()));
}

} // namespace
} // namespace Tests
