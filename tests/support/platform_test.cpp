#include "support/platform_test.h"

#include "embedded/diagnostics/fault_injection.h"

namespace Tests {

PlatformTest::PlatformTest() : before_(Embedded::Audit::now())
{
    Embedded::Faults::disarm();
}

// In the destructor, not in TearDown: by now the members of derived fixtures are gone.
PlatformTest::~PlatformTest()
{
    Embedded::Faults::disarm();
    EXPECT_EQ(Embedded::Audit::difference(before_, Embedded::Audit::now()), "") << "left behind by the test";
}

} // namespace Tests
