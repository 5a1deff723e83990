// The host calls the reactor through its table of virtual functions: the callback first, then two that are not the
// module's. This reads the table as the Itanium C++ ABI lays it out, which g++ and clang++ follow on every system.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <type_traits>

#include "frame/decomposition_reactor.h"

namespace Tests {
namespace {

constexpr std::size_t kSlots = 3;

struct NothingOverridden final : QeDbDecompositionReactor {};

using Table = std::array<const void*, kSlots>;

Table tableOf(const QeDbDecompositionReactor& reactor)
{
    const void* table = nullptr;
    std::memcpy(&table, static_cast<const void*>(&reactor), sizeof table);
    Table slots{};
    std::memcpy(slots.data(), table, sizeof slots);
    return slots;
}

TEST(DecompositionReactorSlots, TheObjectHasNoDataAndNoVirtualDestructor)
{
    EXPECT_EQ(sizeof(OrvelCoordsysCoreDecompositionReactor), sizeof(void*));
    EXPECT_FALSE(std::has_virtual_destructor_v<OrvelCoordsysCoreDecompositionReactor>);
}

TEST(DecompositionReactorSlots, TheCallbackComesFirstAndIsTheModules)
{
    EXPECT_NE(tableOf(OrvelCoordsysCoreDecompositionReactor())[0], tableOf(NothingOverridden())[0]);
}

TEST(DecompositionReactorSlots, TheTwoOthersAreTheHosts)
{
    const Table host = tableOf(NothingOverridden());
    const Table module = tableOf(OrvelCoordsysCoreDecompositionReactor());
    EXPECT_EQ(module[1], host[1]);
    EXPECT_EQ(module[2], host[2]);
}

} // namespace
} // namespace Tests
