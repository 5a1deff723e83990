// The order of the application object's virtual functions is fixed.
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

VirtualTable<kApplicationSlots> readTable(const COrvelCoordsysCoreApp& object)
{
    return readVirtualTable<kApplicationSlots>(&object);
}

TEST(ApplicationSlots, ApplicationHasNoData)
{
    EXPECT_EQ(sizeof(COrvelCoordsysCoreApp), sizeof(void*));
    EXPECT_FALSE(std::has_virtual_destructor_v<COrvelCoordsysCoreApp>);
}

TEST(ApplicationSlots, LoadComesFirst)
{
    const VirtualTable<kApplicationSlots> base = readTable(PlainApplication());
    const VirtualTable<kApplicationSlots> derived = readTable(LoadOnly());
    EXPECT_NE(derived[kLoadSlot], base[kLoadSlot]);
    EXPECT_EQ(derived[kUnloadSlot], base[kUnloadSlot]);
}

TEST(ApplicationSlots, UnloadComesSecond)
{
    const VirtualTable<kApplicationSlots> base = readTable(PlainApplication());
    const VirtualTable<kApplicationSlots> derived = readTable(UnloadOnly());
    EXPECT_EQ(derived[kLoadSlot], base[kLoadSlot]);
    EXPECT_NE(derived[kUnloadSlot], base[kUnloadSlot]);
}

TEST(ApplicationSlots, ModuleApplicationHasTheFunctionsOfTheClass)
{
    EXPECT_EQ(readTable(Orvel::moduleApplication()), readTable(PlainApplication()));
}

} // namespace
} // namespace Tests
