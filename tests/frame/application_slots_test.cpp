// The order of the application object's operations in its table of virtual functions is fixed. This reads the table as
// the Itanium C++ ABI lays it out, which g++ and clang++ follow on every system.
#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <type_traits>

#include "frame/application.h"

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

using Table = std::array<const void*, kSlots>;

Table tableOf(const COrvelCoordsysCoreApp& application)
{
    const void* table = nullptr;
    std::memcpy(&table, static_cast<const void*>(&application), sizeof table);
    Table slots{};
    std::memcpy(slots.data(), table, sizeof slots);
    return slots;
}

TEST(ApplicationSlots, TheObjectHasNoData)
{
    EXPECT_EQ(sizeof(COrvelCoordsysCoreApp), sizeof(void*));
    EXPECT_FALSE(std::has_virtual_destructor_v<COrvelCoordsysCoreApp>);
}

TEST(ApplicationSlots, LoadComesFirst)
{
    const Table base = tableOf(NothingOverridden());
    const Table derived = tableOf(LoadOnly());
    EXPECT_NE(derived[kLoad], base[kLoad]);
    EXPECT_EQ(derived[kUnload], base[kUnload]);
}

TEST(ApplicationSlots, UnloadComesNext)
{
    const Table base = tableOf(NothingOverridden());
    const Table derived = tableOf(UnloadOnly());
    EXPECT_EQ(derived[kLoad], base[kLoad]);
    EXPECT_NE(derived[kUnload], base[kUnload]);
}

TEST(ApplicationSlots, TheModulesOwnObject_HasTheOperationsOfTheClass)
{
    EXPECT_EQ(tableOf(orvelApplication()), tableOf(NothingOverridden()));
}

} // namespace
} // namespace Tests
