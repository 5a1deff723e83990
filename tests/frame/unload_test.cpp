// The effects of the unload message and of a failed load.
#include <stdexcept>

#include "coordsys/orvel_coordinate_system.h"
#include "embedded/host/application/application.h"
#include "frame_test.h"

namespace Tests {
namespace {

namespace Cs = Zentara::Gis::Orvel::CoordinateSystem;

constexpr int kInitialiseMessage = 1;
constexpr int kUnloadMessage = 2;

/// Throws in the calls that the test chooses, as a host may.
class ThrowingManager final : public QeDbDecompositionManager {
public:
    Qeapp::ErrorStatus addReactor(QeDbDecompositionReactor* reactor) override
    {
        ++additions;
        throwIf(additionThrows);
        registered = reactor;
        return Qeapp::eOk;
    }
    Qeapp::ErrorStatus removeReactor(QeDbDecompositionReactor* reactor) override
    {
        ++removals;
        throwIf(removalThrows);
        EXPECT_EQ(reactor, registered);
        // The reactor still exists.
        EXPECT_EQ(reactor->decomposeForSave(nullptr, QeDb::kCurrentDwg, nullptr, nullptr), Qeapp::eNoDatabase);
        registered = nullptr;
        return Qeapp::eOk;
    }

    int additions = 0;
    int removals = 0;
    bool additionThrows = false;
    bool removalThrows = false;
    QeDbDecompositionReactor* registered = nullptr;

private:
    static void throwIf(bool condition)
    {
        if (condition)
            throw std::runtime_error("chosen by the test");
    }
};

class Unload : public FrameTest {
protected:
    int handle = 0;

    int send(int message) { return qerxEntryPoint(message, &handle); }
};

TEST_F(Unload, KeepsTheClientsReactorsRegistered)
{
    Cs::OrvelCoordinateSystemReactor reactor;
    ASSERT_EQ(send(kInitialiseMessage), 0);
    ASSERT_EQ(Cs::AddCoordinateSystemReactor(&reactor), Qeapp::eOk);
    ASSERT_EQ(send(kUnloadMessage), 0);
    EXPECT_EQ(Cs::AddCoordinateSystemReactor(&reactor), Qeapp::eInvalidInput) << "still registered";
    EXPECT_EQ(Cs::RemoveCoordinateSystemReactor(&reactor), Qeapp::eOk);
}

TEST_F(Unload, KeepsTheSharedSetting)
{
    ASSERT_EQ(Cs::SetInitializeGeodataParameters(true), Qeapp::eOk);
    ASSERT_EQ(send(kInitialiseMessage), 0);
    ASSERT_EQ(send(kUnloadMessage), 0);
    bool value = false;
    EXPECT_EQ(Cs::GetInitializeGeodataParameters(value), Qeapp::eOk);
    EXPECT_TRUE(value);
    ASSERT_EQ(Cs::SetInitializeGeodataParameters(false), Qeapp::eOk);
}

TEST_F(Unload, RemovesTheReactorAndAllowsTheNextLoad)
{
    ThrowingManager manager;
    Embedded::setHostParts({.otherDecompositionManager = &manager});
    for (int round = 0; round < 2; ++round) {
        ASSERT_EQ(send(kInitialiseMessage), 0);
        EXPECT_NE(manager.registered, nullptr);
        ASSERT_EQ(send(kUnloadMessage), 0);
        EXPECT_EQ(manager.registered, nullptr);
    }
    EXPECT_EQ(manager.additions, 2);
}

TEST_F(Unload, LoadWhoseRegistrationThrows_DoesNotCountAsLoad)
{
    ThrowingManager manager;
    Embedded::setHostParts({.otherDecompositionManager = &manager});
    manager.additionThrows = true;
    EXPECT_THROW(static_cast<void>(Orvel::moduleApplication().load()), std::runtime_error);
    manager.additionThrows = false;
    EXPECT_EQ(Orvel::moduleApplication().load(), Qeapp::eOk);
    EXPECT_NE(manager.registered, nullptr) << "the second load registers";
    EXPECT_EQ(Orvel::moduleApplication().unload(), Qeapp::eOk);
}

TEST_F(Unload, RemovalThatThrows_IsTriedAgainByTheNextUnload)
{
    ThrowingManager manager;
    Embedded::setHostParts({.otherDecompositionManager = &manager});
    ASSERT_EQ(Orvel::moduleApplication().load(), Qeapp::eOk);
    manager.removalThrows = true;
    EXPECT_THROW(static_cast<void>(Orvel::moduleApplication().unload()), std::runtime_error);
    ASSERT_NE(manager.registered, nullptr);
    EXPECT_EQ(manager.registered->decomposeForSave(nullptr, QeDb::kCurrentDwg, nullptr, nullptr), Qeapp::eNoDatabase)
        << "the host may still call it";
    EXPECT_THROW(static_cast<void>(Orvel::moduleApplication().unload()), std::runtime_error);
    EXPECT_EQ(manager.removals, 2);
}

} // namespace
} // namespace Tests
