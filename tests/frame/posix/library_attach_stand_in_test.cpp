// The system calls of the library's entry point. Only the stand-in for Win32 records them.
#include "embedded/diagnostics/fault_injection.h"
#include "frame/library_attach.h"
#include "storage/failing_calls.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using Embedded::FaultInjection;
using Calls = std::vector<std::string>;

class LibraryAttachCalls : public PlatformTest {
protected:
    int module = 0;

    Calls recordCallsOn(DWORD reason)
    {
        return recordCalls([&] { EXPECT_EQ(DllMain(&module, reason, nullptr), TRUE); });
    }
};

TEST_F(LibraryAttachCalls, ProcessAttach_SwitchesThreadNoticesOff)
{
    EXPECT_EQ(recordCallsOn(kProcessAttach), Calls{"DisableThreadLibraryCalls"});
}

TEST_F(LibraryAttachCalls, OtherReasons_MakeNoCall)
{
    for (const DWORD reason : {kProcessDetach, kThreadAttach, kThreadDetach, DWORD{4}})
        EXPECT_EQ(recordCallsOn(reason), Calls()) << reason;
}

TEST_F(LibraryAttachCalls, NoticesThatCannotBeSwitchedOff_AreIgnored)
{
    const Embedded::ScopedFault fault({.call = "DisableThreadLibraryCalls", .code = {}});
    EXPECT_EQ(DllMain(&module, kProcessAttach, nullptr), TRUE);
    EXPECT_EQ(FaultInjection::failedCalls(), 1U);
}

TEST_F(LibraryAttachCalls, StandIn_NeedsAModule)
{
    EXPECT_EQ(DisableThreadLibraryCalls(&module), TRUE);
    EXPECT_EQ(DisableThreadLibraryCalls(nullptr), FALSE);
}

} // namespace
} // namespace Tests
