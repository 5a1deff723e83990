// The host loads the module by its plain name. A client that is linked with it asks the system for the name with the
// interface's version. Both must get one library.
#include <filesystem>

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/host/application/application.h"
#include "support/drawing.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;

using OneModule = PlatformTest;

class ChangeCounter : public Cs::OrvelCoordinateSystemReactor {
public:
    int changes = 0;

private:
    void CoordinateSystemChanged(QeDbDatabase*, const wchar_t*) override { ++changes; }
};

TEST_F(OneModule, LinkedClient_RegistersItsReactorsWithTheModuleThatTheHostHasLoaded)
{
    const auto plainName = std::filesystem::path(ORVEL_MODULE_FILE).replace_filename("OrvelCoordsysCore.so");
    const Embedded::Expected<void*> handle = Embedded::loadModule(plainName);
    ASSERT_TRUE(handle) << handle.error().text();
    const auto clearThroughTheHostsModule =
        reinterpret_cast<decltype(&Cs::ClearCoordinateSystem)>(Embedded::moduleSymbol(
            *handle, "_ZN7Zentara3Gis5Orvel16CoordinateSystem21ClearCoordinateSystemEP12QeDbDatabase"));
    ASSERT_NE(clearThroughTheHostsModule, nullptr);
    const Drawing drawing;
    ChangeCounter counter;
    ASSERT_EQ(Cs::AddCoordinateSystemReactor(&counter), Qeapp::eOk);
    EXPECT_EQ(clearThroughTheHostsModule(drawing.database()), Qeapp::eOk);
    EXPECT_EQ(counter.changes, 1);
    EXPECT_EQ(Cs::RemoveCoordinateSystemReactor(&counter), Qeapp::eOk);
    EXPECT_EQ(Embedded::unloadModule(*handle), Qeapp::eOk);
}

} // namespace
} // namespace Tests
