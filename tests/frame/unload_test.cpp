// What a message of unloading ends, what it leaves, and what a load that went wrong leaves.
#include <stdexcept>

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/host/application.h"
#include "frame_test.h"

namespace Tests {
namespace {

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;

constexpr int kInitialiseMessage = 1;
constexpr int kUnloadMessage = 2;

/// Refuses its first reactor with an exception, as a host may.
class ThrowingOnce final : public QeDbDecompositionManager {
public:
    Qeapp::ErrorStatus addReactor(QeDbDecompositionReactor* reactor) override
    {
        if (++asked == 1)
            throw std::runtime_error("not now");
        registered = reactor;
        return Qeapp::eOk;
    }
    Qeapp::ErrorStatus removeReactor(QeDbDecompositionReactor* reactor) override
    {
        EXPECT_EQ(reactor, registered);
        // It is alive as yet.
        EXPECT_EQ(reactor->decomposeForSave(nullptr, QeDb::kCurrentDwg, nullptr, nullptr), Qeapp::eNoDatabase);
        registered = nullptr;
        return Qeapp::eOk;
    }

    int asked = 0;
    QeDbDecompositionReactor* registered = nullptr;
};

class Unload : public FrameTest {
protected:
    int handle = 0;

    int send(int message) { return qerxEntryPoint(message, &handle); }
};

TEST_F(Unload, LeavesTheClientsReactorsRegistered)
{
    Cs::OrvelCoordinateSystemReactor reactor;
    ASSERT_EQ(send(kInitialiseMessage), 0);
    ASSERT_EQ(Cs::AddCoordinateSystemReactor(&reactor), Qeapp::eOk);
    ASSERT_EQ(send(kUnloadMessage), 0);
    EXPECT_EQ(Cs::AddCoordinateSystemReactor(&reactor), Qeapp::eInvalidInput) << "it is registered already";
    EXPECT_EQ(Cs::RemoveCoordinateSystemReactor(&reactor), Qeapp::eOk);
}

TEST_F(Unload, LeavesTheSharedSetting)
{
    ASSERT_EQ(Cs::SetInitializeGeodataParameters(true), Qeapp::eOk);
    ASSERT_EQ(send(kInitialiseMessage), 0);
    ASSERT_EQ(send(kUnloadMessage), 0);
    bool value = false;
    EXPECT_EQ(Cs::GetInitializeGeodataParameters(value), Qeapp::eOk);
    EXPECT_TRUE(value);
    ASSERT_EQ(Cs::SetInitializeGeodataParameters(false), Qeapp::eOk);
}

TEST_F(Unload, RemovesAReactorThatIsAliveAndLetsTheNextLoadRegisterAnother)
{
    ThrowingOnce manager;
    manager.asked = 1; // the one exception is over
    Embedded::setHostParts({.otherDecompositionManager = &manager});
    for (int round = 0; round < 2; ++round) {
        ASSERT_EQ(send(kInitialiseMessage), 0);
        EXPECT_NE(manager.registered, nullptr);
        ASSERT_EQ(send(kUnloadMessage), 0);
        EXPECT_EQ(manager.registered, nullptr);
    }
    EXPECT_EQ(manager.asked, 3);
}

TEST_F(Unload, LoadWhoseRegistrationThrows_IsNoLoad)
{
    ThrowingOnce manager;
    Embedded::setHostParts({.otherDecompositionManager = &manager});
    EXPECT_THROW(static_cast<void>(orvelApplication().load()), std::runtime_error);
    EXPECT_EQ(orvelApplication().load(), Qeapp::eOk);
    EXPECT_EQ(manager.asked, 2) << "the second load registers";
    EXPECT_NE(manager.registered, nullptr);
    EXPECT_EQ(orvelApplication().unload(), Qeapp::eOk);
}

} // namespace
} // namespace Tests
