#include "storage/failing_calls.h"
#include "storage/host_holders.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

class DocumentLock : public PlatformTest {};

TEST_F(DocumentLock, WithoutACurrentDocument_MakesNoHostCall)
{
    const auto calls = recordFallibleCalls([] { EXPECT_FALSE(Orvel::DocumentLock()); });
    EXPECT_TRUE(calls.empty());
}

} // namespace
} // namespace Tests
