// The host calls the reactor through its table of virtual functions. The callback comes first. The module does not
// override the two others.
#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>

#include "frame/decomposition_reactor.h"
#include "support/virtual_table.h"

namespace Tests {
namespace {

constexpr std::size_t kReactorSlots = 3;

struct PlainReactor final : QeDbDecompositionReactor {};

VirtualTable<kReactorSlots> readTable(const QeDbDecompositionReactor& object)
{
    return readVirtualTable<kReactorSlots>(&object);
}

TEST(DecompositionReactorSlots, ReactorHasNoDataAndNoVirtualDestructor)
{
    EXPECT_EQ(sizeof(OrvelCoordsysCoreDecompositionReactor), sizeof(void*));
    EXPECT_FALSE(std::has_virtual_destructor_v<OrvelCoordsysCoreDecompositionReactor>);
}

TEST(DecompositionReactorSlots, CallbackComesFirstAndIsOverridden)
{
    EXPECT_NE(readTable(OrvelCoordsysCoreDecompositionReactor())[0], readTable(PlainReactor())[0]);
}

TEST(DecompositionReactorSlots, OtherFunctionsAreTheHosts)
{
    const VirtualTable<kReactorSlots> host = readTable(PlainReactor());
    const VirtualTable<kReactorSlots> module = readTable(OrvelCoordsysCoreDecompositionReactor());
    EXPECT_EQ(module[1], host[1]);
    EXPECT_EQ(module[2], host[2]);
}

} // namespace
} // namespace Tests
