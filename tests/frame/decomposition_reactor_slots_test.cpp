// The host calls the reactor through its table of virtual functions: the callback first, then two that are not the
// module's.
#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>

#include "frame/decomposition_reactor.h"
#include "support/virtual_table.h"

namespace Tests {
namespace {

constexpr std::size_t kReactorSlots = 3;

struct PlainReactor final : QeDbDecompositionReactor {};

VirtualTable<kReactorSlots> tableOf(const QeDbDecompositionReactor& object)
{
    return readVirtualTable<kReactorSlots>(&object);
}

TEST(DecompositionReactorSlots, TheObjectHasNoDataAndNoVirtualDestructor)
{
    EXPECT_EQ(sizeof(OrvelCoordsysCoreDecompositionReactor), sizeof(void*));
    EXPECT_FALSE(std::has_virtual_destructor_v<OrvelCoordsysCoreDecompositionReactor>);
}

TEST(DecompositionReactorSlots, TheCallbackComesFirstAndIsTheModules)
{
    EXPECT_NE(tableOf(OrvelCoordsysCoreDecompositionReactor())[0], tableOf(PlainReactor())[0]);
}

TEST(DecompositionReactorSlots, TheTwoOthersAreTheHosts)
{
    const VirtualTable<kReactorSlots> host = tableOf(PlainReactor());
    const VirtualTable<kReactorSlots> module = tableOf(OrvelCoordsysCoreDecompositionReactor());
    EXPECT_EQ(module[1], host[1]);
    EXPECT_EQ(module[2], host[2]);
}

} // namespace
} // namespace Tests
