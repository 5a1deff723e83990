#include "library_attach.h"

#include "support/platform_test.h"

namespace Tests {
namespace {

using LibraryAttach = PlatformTest;

TEST_F(LibraryAttach, EveryReason_ReturnsTrue)
{
    int module = 0;
    for (const DWORD reason : {kProcessDetach, kProcessAttach, kThreadAttach, kThreadDetach, DWORD{4}, ~DWORD{0}})
        EXPECT_EQ(DllMain(reinterpret_cast<HMODULE>(&module), reason, nullptr), 1) << reason;
}

TEST_F(LibraryAttach, EndOfTheProcess_ReturnsTrue)
{
    int module = 0;
    int endOfProcess = 0;
    EXPECT_EQ(DllMain(reinterpret_cast<HMODULE>(&module), kProcessDetach, &endOfProcess), 1);
}

} // namespace
} // namespace Tests
