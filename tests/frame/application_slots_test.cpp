// The order of the application object's operations in its table of virtual functions is fixed.
#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>

#include "frame/application.h"
#include "support/virtual_table.h"

namespace Tests {
namespace {

constexpr std::size_t kSlots = 2;
constexpr std::size_t kLoad = 0;
constexpr std::size_t kUnload = 1;

struct NothingOverridden final : COrvelCoordsysCoreApp {};
struct LoadOnly final : COrvelCoordsysCoreApp {
    Qeapp::ErrorStatus load() override { return Qeapp::eOk; }
};
struct UnloadOnly final : COrvelCoordsysCoreApp {
    Qeapp::ErrorStatus unload() override { return Qeapp::eOk; }
};

VirtualTable<kSlots> tableOf(const COrvelCoordsysCoreApp& object)
{
    return virtualTableOf<kSlots>(&object);
}

TEST(ApplicationSlots, TheObjectHasNoData)
{
    EXPECT_EQ(sizeof(COrvelCoordsysCoreApp), sizeof(void*));
    EXPECT_FALSE(std::has_virtual_destructor_v<COrvelCoordsysCoreApp>);
}

TEST(ApplicationSlots, LoadComesFirst)
{
    const VirtualTable<kSlots> base = tableOf(NothingOverridden());
    const VirtualTable<kSlots> derived = tableOf(LoadOnly());
    EXPECT_NE(derived[kLoad], base[kLoad]);
    EXPECT_EQ(derived[kUnload], base[kUnload]);
}

TEST(ApplicationSlots, UnloadComesNext)
{
    const VirtualTable<kSlots> base = tableOf(NothingOverridden());
    const VirtualTable<kSlots> derived = tableOf(UnloadOnly());
    EXPECT_EQ(derived[kLoad], base[kLoad]);
    EXPECT_NE(derived[kUnload], base[kUnload]);
}

TEST(ApplicationSlots, TheModulesOwnObject_HasTheOperationsOfTheClass)
{
    EXPECT_EQ(tableOf(orvelApplication()), tableOf(NothingOverridden()));
}

} // namespace
} // namespace Tests
