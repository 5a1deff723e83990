// Behaviour of the stand-in where the C runtimes of Windows differ.
#include <cerrno>
#include <string>

#include "embedded/diagnostics/fault_injection.h"
#include "platform/win32.h"
#include "support/platform_test.h"
#include "support/scoped_variable.h"

namespace {

using EnvironmentStandIn = Tests::PlatformTest;
using Tests::ScopedVariable;

constexpr const wchar_t* kVariable = L"ORVEL_TEST_VARIABLE";

TEST_F(EnvironmentStandIn, FailedCall_LeavesAnEmptyBuffer)
{
    wchar_t buffer[4] = L"old";
    std::size_t required = 99;
    const ScopedVariable variable("ORVEL_TEST_VARIABLE", "four");
    EXPECT_EQ(_wgetenv_s(&required, buffer, 4, kVariable), ERANGE);
    EXPECT_STREQ(buffer, L"");
    variable.set(std::nullopt);
    buffer[0] = L'o';
    EXPECT_EQ(_wgetenv_s(&required, buffer, 4, kVariable), 0);
    EXPECT_STREQ(buffer, L"");
    EXPECT_EQ(_wgetenv_s(&required, nullptr, 0, kVariable), 0);
    buffer[0] = L'o';
    EXPECT_EQ(_wgetenv_s(&required, buffer, 4, nullptr), EINVAL);
    EXPECT_STREQ(buffer, L"");
    buffer[0] = L'o';
    const Embedded::ScopedFault fault({.call = "_wgetenv_s", .code = {}});
    EXPECT_EQ(_wgetenv_s(&required, buffer, 4, kVariable), ENOMEM);
    EXPECT_STREQ(buffer, L"");
}

// Windows has no variables with empty values.
TEST_F(EnvironmentStandIn, EmptyValue_HasItsNul)
{
    const ScopedVariable variable("ORVEL_TEST_VARIABLE", "");
    wchar_t buffer[8] = L"before";
    std::size_t required = 99;
    EXPECT_EQ(_wgetenv_s(&required, buffer, 8, kVariable), 0);
    EXPECT_EQ(required, 1U);
    EXPECT_STREQ(buffer, L"");
}

} // namespace
