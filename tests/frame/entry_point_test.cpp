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
    int unknownHandle = 0;

    int send(int message) { return qerxEntryPoint(message, &unknownHandle); }
};

/// Replaces the host's linker and records its calls.
class RecordingLinker : public QeRxDynamicLinker {
public:
    RecordingLinker() : former_(qerxSysRegistry()->atPut(kQeRxDynamicLinkerKey, this)) {}
    ~RecordingLinker() override
    {
        static_cast<void>(qerxSysRegistry()->atPut(kQeRxDynamicLinkerKey, former_));
    } // returns this linker
    RecordingLinker(const RecordingLinker&) = delete;
    RecordingLinker& operator=(const RecordingLinker&) = delete;

    bool unlockApplication(void* appHandle) override
    {
        unlocked.push_back(appHandle);
        return true;
    }

    std::vector<void*> unlocked;

private:
    QeRxObject* former_;
};

/// A linker of a derived class, as the host of a product may have.
class DerivedLinker final : public RecordingLinker {
public:
    static QeRxClass* desc()
    {
        static QeRxClass descriptor(L"DerivedLinker", QeRxDynamicLinker::desc());
        return &descriptor;
    }
    QeRxClass* isA() const override { return desc(); }
};

TEST_F(EntryPoint, ApiVersion_IsTheHostsVersion)
{
    EXPECT_EQ(qerxGetApiVersion(), 0x00180000);
    EXPECT_EQ(qerxGetApiVersion(), kQeRxApiVersion);
}

TEST_F(EntryPoint, Initialisation_DeclaresThenUnlocksThenLoads)
{
    const Calls expected{"qerxRegisterAppMDIAware", "QeRxDynamicLinker::unlockApplication",
                         "QeDbDecompositionManager::addReactor"};
    EXPECT_EQ(recordCalls([&] { EXPECT_EQ(send(kInitialise), 0); }), expected);
    EXPECT_EQ(countReactors(), 1);
}

TEST_F(EntryPoint, Initialisation_UnlocksTheGivenHandle)
{
    RecordingLinker linker;
    ASSERT_EQ(send(kInitialise), 0);
    EXPECT_EQ(linker.unlocked, std::vector<void*>{&unknownHandle});
}

TEST_F(EntryPoint, Initialisation_AcceptsALinkerOfADerivedClass)
{
    DerivedLinker linker;
    ASSERT_EQ(send(kInitialise), 0);
    EXPECT_EQ(linker.unlocked, std::vector<void*>{&unknownHandle});
}

TEST_F(EntryPoint, SecondInitialisation_DeclaresAndUnlocksAgainButRegistersNothing)
{
    ASSERT_EQ(send(kInitialise), 0);
    const Calls expected{"qerxRegisterAppMDIAware", "QeRxDynamicLinker::unlockApplication"};
    EXPECT_EQ(recordCalls([&] { EXPECT_EQ(send(kInitialise), 0); }), expected);
    EXPECT_EQ(countReactors(), 1);
}

TEST_F(EntryPoint, InitialisationOfAnUnknownHandle_ReturnsZero)
{
    EXPECT_EQ(qerxEntryPoint(kInitialise, nullptr), 0);
    EXPECT_EQ(countReactors(), 1);
}

TEST_F(EntryPoint, InitialisationWithoutAManager_ReturnsZero)
{
    removeDecompositionManager();
    EXPECT_EQ(send(kInitialise), 0);
    EXPECT_EQ(countReactors(), 0);
}

TEST_F(EntryPoint, InitialisationWithEveryHostCallFailing_ReturnsZero)
{
    const Embedded::ScopedFault fault({.call = "", .occurrence = 1, .fromThenOn = true, .code = {}});
    EXPECT_EQ(send(kInitialise), 0);
    EXPECT_EQ(Embedded::FaultInjection::failedCalls(), 3U);
}

TEST_F(EntryPoint, Unload_OnlyRemovesTheReactor)
{
    ASSERT_EQ(send(kInitialise), 0);
    EXPECT_EQ(recordCalls([&] { EXPECT_EQ(send(kUnload), 0); }), Calls{"QeDbDecompositionManager::removeReactor"});
    EXPECT_EQ(countReactors(), 0);
}

TEST_F(EntryPoint, UnloadBeforeInitialisation_DoesNothingAndReturnsZero)
{
    EXPECT_EQ(recordCalls([&] { EXPECT_EQ(send(kUnload), 0); }), Calls());
    EXPECT_EQ(countReactors(), 0);
}

TEST_F(EntryPoint, UnloadWithoutAManager_KeepsTheReactorAndReturnsZero)
{
    ASSERT_EQ(send(kInitialise), 0);
    removeDecompositionManager();
    EXPECT_EQ(send(kUnload), 0);
    EXPECT_EQ(countReactors(), 1);
}

TEST_F(EntryPoint, InitialisationAfterUnload_RegistersAgain)
{
    ASSERT_EQ(send(kInitialise), 0);
    ASSERT_EQ(send(kUnload), 0);
    EXPECT_EQ(send(kInitialise), 0);
    EXPECT_EQ(countReactors(), 1);
}

TEST_F(EntryPoint, OtherMessages_AreIgnored)
{
    ASSERT_EQ(send(kInitialise), 0);
    for (const int message : {INT_MIN, -1, 0, 3, 4, 5, 6, 7, 100, INT_MAX}) {
        EXPECT_EQ(recordCalls([&] { EXPECT_EQ(send(message), 0) << message; }), Calls()) << message;
        EXPECT_EQ(countReactors(), 1) << message;
    }
}

} // namespace
} // namespace Tests
