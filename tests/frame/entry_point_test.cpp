#include <climits>

#include "frame_test.h"

namespace Tests {
namespace {

using Calls = std::vector<std::string>;

constexpr int kInitialise = 1;
constexpr int kUnload = 2;

class EntryPoint : public FrameTest {
protected:
    /// A handle that the host does not know.
    int strange = 0;

    int send(int message) { return qerxEntryPoint(message, &strange); }
};

/// Replaces the host's linker and records its calls.
class OwnLinker : public QeRxDynamicLinker {
public:
    OwnLinker() : former_(qerxSysRegistry()->atPut(kQeRxDynamicLinkerKey, this)) {}
    ~OwnLinker() override { static_cast<void>(qerxSysRegistry()->atPut(kQeRxDynamicLinkerKey, former_)); } // itself
    OwnLinker(const OwnLinker&) = delete;
    OwnLinker& operator=(const OwnLinker&) = delete;

    bool unlockApplication(void* appHandle) override
    {
        unlocked.push_back(appHandle);
        return true;
    }

    std::vector<void*> unlocked;

private:
    QeRxObject* former_;
};

/// A linker of a derived class, as a product's host has it.
class DerivedLinker final : public OwnLinker {
public:
    static QeRxClass* desc()
    {
        static QeRxClass descriptor(L"DerivedLinker", QeRxDynamicLinker::desc());
        return &descriptor;
    }
    QeRxClass* isA() const override { return desc(); }
};

TEST_F(EntryPoint, ApiVersion_IsThatOfTheHost)
{
    EXPECT_EQ(qerxGetApiVersion(), 0x00180000);
    EXPECT_EQ(qerxGetApiVersion(), kQeRxApiVersion);
}

TEST_F(EntryPoint, Initialisation_DeclaresUnlocksAndLoadsInThisOrder)
{
    const Calls expected{"qerxRegisterAppMDIAware", "QeRxDynamicLinker::unlockApplication",
                         "QeDbDecompositionManager::addReactor"};
    EXPECT_EQ(callsOf([&] { EXPECT_EQ(send(kInitialise), 0); }), expected);
    EXPECT_EQ(registeredReactors(), 1);
}

TEST_F(EntryPoint, Initialisation_UnlocksTheHandleThatItWasGiven)
{
    OwnLinker linker;
    ASSERT_EQ(send(kInitialise), 0);
    EXPECT_EQ(linker.unlocked, std::vector<void*>{&strange});
}

TEST_F(EntryPoint, Initialisation_TakesALinkerOfADerivedClass)
{
    DerivedLinker linker;
    ASSERT_EQ(send(kInitialise), 0);
    EXPECT_EQ(linker.unlocked, std::vector<void*>{&strange});
}

TEST_F(EntryPoint, SecondInitialisation_DeclaresAndUnlocksAgainButRegistersNothing)
{
    ASSERT_EQ(send(kInitialise), 0);
    const Calls expected{"qerxRegisterAppMDIAware", "QeRxDynamicLinker::unlockApplication"};
    EXPECT_EQ(callsOf([&] { EXPECT_EQ(send(kInitialise), 0); }), expected);
    EXPECT_EQ(registeredReactors(), 1);
}

TEST_F(EntryPoint, InitialisationOfAnUnknownHandle_AnswersZero)
{
    EXPECT_EQ(qerxEntryPoint(kInitialise, nullptr), 0);
    EXPECT_EQ(registeredReactors(), 1);
}

TEST_F(EntryPoint, InitialisationWithoutAManager_AnswersZero)
{
    takeDecompositionManagerAway();
    EXPECT_EQ(send(kInitialise), 0);
    EXPECT_EQ(registeredReactors(), 0);
}

TEST_F(EntryPoint, InitialisationWithEveryHostCallFailing_AnswersZero)
{
    const Embedded::ScopedFault fault({.call = "", .occurrence = 1, .fromThenOn = true, .code = {}});
    EXPECT_EQ(send(kInitialise), 0);
    EXPECT_EQ(Embedded::FaultInjection::failedCalls(), 3U);
}

TEST_F(EntryPoint, Unload_RemovesTheReactorAndUndoesNothingElse)
{
    ASSERT_EQ(send(kInitialise), 0);
    EXPECT_EQ(callsOf([&] { EXPECT_EQ(send(kUnload), 0); }), Calls{"QeDbDecompositionManager::removeReactor"});
    EXPECT_EQ(registeredReactors(), 0);
}

TEST_F(EntryPoint, UnloadBeforeInitialisation_ChangesNothingAndAnswersZero)
{
    EXPECT_EQ(callsOf([&] { EXPECT_EQ(send(kUnload), 0); }), Calls());
    EXPECT_EQ(registeredReactors(), 0);
}

TEST_F(EntryPoint, UnloadWithoutAManager_KeepsTheReactorAndAnswersZero)
{
    ASSERT_EQ(send(kInitialise), 0);
    takeDecompositionManagerAway();
    EXPECT_EQ(send(kUnload), 0);
    EXPECT_EQ(registeredReactors(), 1);
}

TEST_F(EntryPoint, InitialisationAfterUnload_RegistersAgain)
{
    ASSERT_EQ(send(kInitialise), 0);
    ASSERT_EQ(send(kUnload), 0);
    EXPECT_EQ(send(kInitialise), 0);
    EXPECT_EQ(registeredReactors(), 1);
}

TEST_F(EntryPoint, OtherMessages_ArePassedOver)
{
    ASSERT_EQ(send(kInitialise), 0);
    for (const int message : {INT_MIN, -1, 0, 3, 4, 5, 6, 7, 100, INT_MAX}) {
        EXPECT_EQ(callsOf([&] { EXPECT_EQ(send(message), 0) << message; }), Calls()) << message;
        EXPECT_EQ(registeredReactors(), 1) << message;
    }
}

} // namespace
} // namespace Tests
