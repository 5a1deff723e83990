#include "support/platform_test.h"

#include "embedded/diagnostics/fault_injection.h"

namespace Tests {

PlatformTest::PlatformTest() : before_(Embedded::ResourceCounters::now())
{
    Embedded::FaultInjection::disarm();
}

// In the destructor, not in TearDown: by now the members of derived fixtures are gone.
PlatformTest::~PlatformTest()
{
    Embedded::FaultInjection::disarm();
    EXPECT_EQ(Embedded::ResourceCounters::difference(before_, Embedded::ResourceCounters::now()), "")
        << "left behind by the test";
}

} // namespace Tests
