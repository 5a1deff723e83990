// A broken promise ends the process, as fuzzers need it.
#include "fuzz/oracle.h"

#include "platform/host/memory.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

class FuzzOracle : public PlatformTest {};

TEST_F(FuzzOracle, PromiseThatHolds_LetsTheTargetGoOn)
{
    Fuzz::require(true, "one and one are two");
}

TEST_F(FuzzOracle, PromiseThatDoesNotHold_EndsTheProcessAndIsNamed)
{
    EXPECT_DEATH(Fuzz::require(false, "one and one are three"), "Broken promise: one and one are three");
}

TEST_F(FuzzOracle, MemoryThatIsLeft_EndsTheProcessAndIsNamed)
{
    EXPECT_DEATH(
        {
            const Fuzz::LeakCheck guard;
            static_cast<void>(qeapp_malloc(1)); // leaks
        },
        "leaked: 1 resbuf memory block");
}

} // namespace
} // namespace Tests
