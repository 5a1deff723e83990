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
    EXPECT_EQ(countReactors(), 0);
}

TEST_F(Application, Load_RegistersOneReactor)
{
    EXPECT_EQ(application.load(), Qeapp::eOk);
    EXPECT_EQ(countReactors(), 1);
}

TEST_F(Application, SecondLoad_MakesNoHostCall)
{
    ASSERT_EQ(application.load(), Qeapp::eOk);
    EXPECT_EQ(recordCalls([&] { EXPECT_EQ(application.load(), Qeapp::eOk); }), Calls());
    EXPECT_EQ(countReactors(), 1);
}

TEST_F(Application, SecondLoad_SucceedsWithoutAManager)
{
    ASSERT_EQ(application.load(), Qeapp::eOk);
    removeDecompositionManager();
    EXPECT_EQ(application.load(), Qeapp::eOk);
}

TEST_F(Application, LoadWithoutAManager_ReturnsNotApplicableAndRegistersNothing)
{
    removeDecompositionManager();
    EXPECT_EQ(application.load(), 2);
    EXPECT_EQ(countReactors(), 0);
}

TEST_F(Application, LoadAfterALoadWithoutAManager_Registers)
{
    removeDecompositionManager();
    ASSERT_EQ(application.load(), Qeapp::eNotApplicable);
    restoreDecompositionManager();
    EXPECT_EQ(application.load(), Qeapp::eOk);
    EXPECT_EQ(countReactors(), 1);
}

TEST_F(Application, Unload_RemovesTheReactor)
{
    ASSERT_EQ(application.load(), Qeapp::eOk);
    EXPECT_EQ(application.unload(), Qeapp::eOk);
    EXPECT_EQ(countReactors(), 0);
}

TEST_F(Application, UnloadBeforeLoad_DoesNothing)
{
    EXPECT_EQ(recordCalls([&] { EXPECT_EQ(application.unload(), Qeapp::eOk); }), Calls());
}

TEST_F(Application, UnloadBeforeLoadWithoutAManager_Succeeds)
{
    removeDecompositionManager();
    EXPECT_EQ(application.unload(), Qeapp::eOk);
}

TEST_F(Application, SecondUnload_DoesNothing)
{
    ASSERT_EQ(application.load(), Qeapp::eOk);
    ASSERT_EQ(application.unload(), Qeapp::eOk);
    EXPECT_EQ(recordCalls([&] { EXPECT_EQ(application.unload(), Qeapp::eOk); }), Calls());
}

TEST_F(Application, UnloadWithoutAManager_ReturnsNotApplicableAndKeepsTheReactor)
{
    ASSERT_EQ(application.load(), Qeapp::eOk);
    removeDecompositionManager();
    EXPECT_EQ(application.unload(), 2);
    EXPECT_EQ(countReactors(), 1);
}

TEST_F(Application, UnloadAfterAnUnloadWithoutAManager_RemovesTheReactor)
{
    ASSERT_EQ(application.load(), Qeapp::eOk);
    removeDecompositionManager();
    ASSERT_EQ(application.unload(), Qeapp::eNotApplicable);
    restoreDecompositionManager();
    EXPECT_EQ(recordCalls([&] { EXPECT_EQ(application.unload(), Qeapp::eOk); }),
              Calls{"QeDbDecompositionManager::removeReactor"});
    EXPECT_EQ(countReactors(), 0);
}

// The host can still call a reactor that it could not remove.
TEST_F(Application, UnloadWhoseRemovalThrows_KeepsTheReactorRegistered)
{
    ASSERT_EQ(application.load(), Qeapp::eOk);
    {
        const ScopedFault fault({.call = "QeDbDecompositionManager::removeReactor", .code = {}, .throws = true});
        EXPECT_THROW(static_cast<void>(application.unload()), std::bad_alloc); // it does not return
    }
    EXPECT_EQ(countReactors(), 1);
    EXPECT_EQ(recordCalls([&] { EXPECT_EQ(application.load(), Qeapp::eOk); }), Calls()) << "it still counts as loaded";
    EXPECT_EQ(application.unload(), Qeapp::eOk);
    EXPECT_EQ(countReactors(), 0);
}

TEST_F(Application, LoadAfterUnload_RegistersAgain)
{
    for (int round = 0; round < 3; ++round) {
        EXPECT_EQ(application.load(), Qeapp::eOk);
        EXPECT_EQ(countReactors(), 1);
        EXPECT_EQ(application.unload(), Qeapp::eOk);
        EXPECT_EQ(countReactors(), 0);
    }
}

// Only a missing manager is a failure. The manager's own result is ignored.
TEST_F(Application, LoadThatTheManagerRefuses_Succeeds)
{
    {
        const ScopedFault fault({.call = "QeDbDecompositionManager::addReactor", .code = {}});
        EXPECT_EQ(application.load(), Qeapp::eOk);
    }
    EXPECT_EQ(countReactors(), 0);
    EXPECT_EQ(recordCalls([&] { EXPECT_EQ(application.load(), Qeapp::eOk); }), Calls());
}

TEST_F(Application, UnloadAfterALoadThatTheManagerRefused_Succeeds)
{
    {
        const ScopedFault fault({.call = "QeDbDecompositionManager::addReactor", .code = {}});
        ASSERT_EQ(application.load(), Qeapp::eOk);
    }
    EXPECT_EQ(application.unload(), Qeapp::eOk);
    EXPECT_EQ(application.load(), Qeapp::eOk);
    EXPECT_EQ(countReactors(), 1);
}

} // namespace
} // namespace Tests
