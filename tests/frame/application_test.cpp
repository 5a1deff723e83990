#include "frame_test.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;
using Calls = std::vector<std::string>;

class Application : public FrameTest {
protected:
    COrvelCoordsysCoreApp& application = Orvel::moduleApplication();
};

TEST_F(Application, IsOneObject)
{
    EXPECT_EQ(&Orvel::moduleApplication(), &application);
}

TEST_F(Application, StartsWithNothingRegistered)
{
    EXPECT_EQ(registeredReactors(), 0);
}

TEST_F(Application, Load_RegistersOneReactor)
{
    EXPECT_EQ(application.load(), Qeapp::eOk);
    EXPECT_EQ(registeredReactors(), 1);
}

TEST_F(Application, SecondLoad_DoesNotEvenAskTheHost)
{
    ASSERT_EQ(application.load(), Qeapp::eOk);
    EXPECT_EQ(callsOf([&] { EXPECT_EQ(application.load(), Qeapp::eOk); }), Calls());
    EXPECT_EQ(registeredReactors(), 1);
}

TEST_F(Application, SecondLoad_SucceedsWithoutAManagerToo)
{
    ASSERT_EQ(application.load(), Qeapp::eOk);
    takeDecompositionManagerAway();
    EXPECT_EQ(application.load(), Qeapp::eOk);
}

TEST_F(Application, LoadWithoutAManager_IsNotApplicableAndRegistersNothing)
{
    takeDecompositionManagerAway();
    EXPECT_EQ(application.load(), 2);
    EXPECT_EQ(registeredReactors(), 0);
}

TEST_F(Application, LoadAfterOneWithoutAManager_Registers)
{
    takeDecompositionManagerAway();
    ASSERT_EQ(application.load(), Qeapp::eNotApplicable);
    giveDecompositionManagerBack();
    EXPECT_EQ(application.load(), Qeapp::eOk);
    EXPECT_EQ(registeredReactors(), 1);
}

TEST_F(Application, Unload_RemovesTheReactor)
{
    ASSERT_EQ(application.load(), Qeapp::eOk);
    EXPECT_EQ(application.unload(), Qeapp::eOk);
    EXPECT_EQ(registeredReactors(), 0);
}

TEST_F(Application, UnloadBeforeLoad_DoesNothing)
{
    EXPECT_EQ(callsOf([&] { EXPECT_EQ(application.unload(), Qeapp::eOk); }), Calls());
}

TEST_F(Application, UnloadBeforeLoadWithoutAManager_SucceedsToo)
{
    takeDecompositionManagerAway();
    EXPECT_EQ(application.unload(), Qeapp::eOk);
}

TEST_F(Application, SecondUnload_DoesNothing)
{
    ASSERT_EQ(application.load(), Qeapp::eOk);
    ASSERT_EQ(application.unload(), Qeapp::eOk);
    EXPECT_EQ(callsOf([&] { EXPECT_EQ(application.unload(), Qeapp::eOk); }), Calls());
}

TEST_F(Application, UnloadWithoutAManager_IsNotApplicableAndKeepsTheReactor)
{
    ASSERT_EQ(application.load(), Qeapp::eOk);
    takeDecompositionManagerAway();
    EXPECT_EQ(application.unload(), 2);
    EXPECT_EQ(registeredReactors(), 1);
}

TEST_F(Application, UnloadAfterOneWithoutAManager_RemovesTheReactor)
{
    ASSERT_EQ(application.load(), Qeapp::eOk);
    takeDecompositionManagerAway();
    ASSERT_EQ(application.unload(), Qeapp::eNotApplicable);
    giveDecompositionManagerBack();
    EXPECT_EQ(callsOf([&] { EXPECT_EQ(application.unload(), Qeapp::eOk); }),
              Calls{"QeDbDecompositionManager::removeReactor"});
    EXPECT_EQ(registeredReactors(), 0);
}

// The host can still call a reactor that it could not remove.
TEST_F(Application, UnloadWhoseRemovalThrows_LeavesTheReactorAliveAndRegistered)
{
    ASSERT_EQ(application.load(), Qeapp::eOk);
    {
        const ScopedFault fault({.call = "QeDbDecompositionManager::removeReactor", .code = {}, .throws = true});
        EXPECT_THROW(static_cast<void>(application.unload()), std::bad_alloc); // there is no result
    }
    EXPECT_EQ(registeredReactors(), 1);
    EXPECT_EQ(callsOf([&] { EXPECT_EQ(application.load(), Qeapp::eOk); }), Calls()) << "it is loaded";
    EXPECT_EQ(application.unload(), Qeapp::eOk);
    EXPECT_EQ(registeredReactors(), 0);
}

TEST_F(Application, LoadAfterUnload_RegistersAgain)
{
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(application.load(), Qeapp::eOk);
        EXPECT_EQ(registeredReactors(), 1);
        EXPECT_EQ(application.unload(), Qeapp::eOk);
        EXPECT_EQ(registeredReactors(), 0);
    }
}

// The manager's result is not the module's: only a missing manager is a failure.
TEST_F(Application, LoadThatTheManagerRefuses_CountsAsLoaded)
{
    {
        const ScopedFault fault({.call = "QeDbDecompositionManager::addReactor", .code = {}});
        EXPECT_EQ(application.load(), Qeapp::eOk);
    }
    EXPECT_EQ(registeredReactors(), 0);
    EXPECT_EQ(callsOf([&] { EXPECT_EQ(application.load(), Qeapp::eOk); }), Calls());
}

TEST_F(Application, UnloadAfterALoadThatTheManagerRefused_Succeeds)
{
    {
        const ScopedFault fault({.call = "QeDbDecompositionManager::addReactor", .code = {}});
        ASSERT_EQ(application.load(), Qeapp::eOk);
    }
    EXPECT_EQ(application.unload(), Qeapp::eOk);
    EXPECT_EQ(application.load(), Qeapp::eOk);
    EXPECT_EQ(registeredReactors(), 1);
}

} // namespace
} // namespace Tests
