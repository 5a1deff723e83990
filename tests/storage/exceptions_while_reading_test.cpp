// Reading reports no failures: a stored form that cannot be read when memory is short counts as missing.
#include "embedded/diagnostics/fault_injection.h"
#include "storage/definition_xrecord.h"
#include "storage/failing_allocation.h"
#include "storage/legacy_projection.h"
#include "storage/packed_forms.h"
#include "support/drawing.h"
#include "support/platform_test.h"

namespace Tests {
namespace {

class ExceptionsWhileReading : public PlatformTest {};

TEST_F(ExceptionsWhileReading, CodeThatCannotBeCopiedReadsAsNoCode)
{
    const std::wstring code(300, L'x'); // too long to be stored without an allocation
    const std::size_t size = (code.size() + 1) * sizeof(wchar_t);
    Drawing drawing;
    drawing.withLegacyCode(code);
    std::size_t allocations = 0;
    {
        const ScopedFailingAllocation counting(size, 0);
        EXPECT_EQ(Orvel::ReadLegacyProjectionCode(drawing.database()), code);
        allocations = counting.count();
    }
    ASSERT_GE(allocations, 1U);
    const ScopedFailingAllocation last(size, allocations); // the earlier ones are the host's
    EXPECT_EQ(Orvel::ReadLegacyProjectionCode(drawing.database()), L"");
}

TEST_F(ExceptionsWhileReading, ChainThatThrowsWhenFetchedIsRejected)
{
    const auto local = catalogSystem(L"LOCAL:METRE");
    Drawing drawing;
    drawing.withXrecord(joinedItems({{{1071, 1}}, makeGroup(local.get())}));
    Orvel::DefinitionSet definitions;
    {
        const Embedded::ScopedFault fault({.call = "QeDbXrecord::rbChain", .throws = true});
        EXPECT_FALSE(Orvel::ReadCsDefinitionXrecord(drawing.database(), L"LOCAL:METRE", definitions));
        EXPECT_EQ(Embedded::FaultInjection::failedCalls(), 1U);
    }
    EXPECT_FALSE(definitions.system);
    EXPECT_TRUE(Orvel::ReadCsDefinitionXrecord(drawing.database(), L"LOCAL:METRE", definitions))
        << "nothing was left open";
}

} // namespace
} // namespace Tests
