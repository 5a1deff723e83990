#include "coordsys/orvel_coordinate_system.h"
#include "embedded/host/application/application.h"
#include "support/drawing.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;

using LinkedClient = PlatformTest;

class VetoingReactor : public Cs::OrvelCoordinateSystemReactor {
    bool CoordinateSystemWillChange(QeDbDatabase*, const wchar_t* const) override { return false; }
};

/// The state of the module that a client is linked with, when the host loads and unloads the module.
TEST_F(LinkedClient, KeepsItsReactorWhenTheHostUnloadsTheModule)
{
    const Drawing drawing;
    VetoingReactor reactor;
    const Embedded::Expected<void*> handle = Embedded::loadModule(ORVEL_MODULE_FILE);
    ASSERT_TRUE(handle) << handle.error().text();
    ASSERT_EQ(Cs::AddCoordinateSystemReactor(&reactor), Qeapp::eOk);
    ASSERT_EQ(Embedded::unloadModule(*handle), Qeapp::eOk);
    EXPECT_EQ(Cs::SetCoordinateSystem(L"EPSG:25832", drawing.database()), Qeapp::eVetoed);
    EXPECT_EQ(Cs::RemoveCoordinateSystemReactor(&reactor), Qeapp::eOk);
}

} // namespace
} // namespace Tests
