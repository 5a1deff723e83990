#include "support/platform_test.h"

#include "embedded/diagnostics/fault_injection.h"

namespace Tests {

PlatformTest::PlatformTest() : before_(Embedded::ResourceCounters::now())
{
    Embedded::FaultInjection::disarm();
}

// Checks in the destructor, not in TearDown, since the members of derived fixtures are destroyed by now.
PlatformTest::~PlatformTest()
{
    Embedded::FaultInjection::disarm();
    EXPECT_EQ(Embedded::ResourceCounters::difference(before_, Embedded::ResourceCounters::now()), "")
        << "held after the test";
}

} // namespace Tests
