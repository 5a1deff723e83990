// A broken promise ends the process, as fuzzers need it.
#include "fuzz/oracle.h"

#include "platform/host/memory.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

using FuzzOracle = PlatformTest;

TEST_F(FuzzOracle, KeptPromise_LetsTheTargetContinue)
{
    Fuzz::require(true, "one and one are two");
}

TEST_F(FuzzOracle, BrokenPromise_EndsTheProcessAndIsNamed)
{
    EXPECT_DEATH(Fuzz::require(false, "one and one are three"), "Broken promise: one and one are three");
}

TEST_F(FuzzOracle, LeakedMemory_EndsTheProcessAndIsNamed)
{
    EXPECT_DEATH(
        {
            const Fuzz::LeakCheck guard;
            static_cast<void>(qeapp_malloc(1)); // is never freed
        },
        "leaked: 1 resbuf memory block");
}

} // namespace
} // namespace Tests
