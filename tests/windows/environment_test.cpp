#include <cerrno>
#include <cstdlib>
#include <string>

#include "embedded/diagnostics/fault_injection.h"
#include "platform/win32.h"
#include "support/platform_test.h"
#include "support/scoped_variable.h"

namespace {

using Environment = Tests::PlatformTest;
using Tests::ScopedVariable;

constexpr const wchar_t* kName = L"ORVEL_TEST_VARIABLE";

TEST_F(Environment, Value_HasItsLengthAndItsNul)
{
    const ScopedVariable variable("ORVEL_TEST_VARIABLE", "K\xC3\xB8ge");
    wchar_t buffer[8];
    std::size_t required = 99;
    EXPECT_EQ(_wgetenv_s(&required, buffer, 8, kName), 0);
    EXPECT_EQ(required, 5U);
    EXPECT_STREQ(buffer, L"K\u00F8ge");
}

TEST_F(Environment, ValueThatJustFits_IsRead)
{
    const ScopedVariable variable("ORVEL_TEST_VARIABLE", std::string(259, 'x'));
    wchar_t buffer[260];
    std::size_t required = 0;
    EXPECT_EQ(_wgetenv_s(&required, buffer, 260, kName), 0);
    EXPECT_EQ(std::wstring(buffer), std::wstring(259, L'x'));
}

TEST_F(Environment, ValueThatDoesNotFit_ReturnsItsLength)
{
    const ScopedVariable variable("ORVEL_TEST_VARIABLE", std::string(260, 'x'));
    wchar_t buffer[260];
    std::size_t required = 0;
    EXPECT_EQ(_wgetenv_s(&required, buffer, 260, kName), ERANGE);
    EXPECT_EQ(required, 261U);
}

TEST_F(Environment, MissingVariable_HasLengthZero)
{
    const ScopedVariable variable("ORVEL_TEST_VARIABLE");
    wchar_t buffer[8];
    std::size_t required = 99;
    static_cast<void>(_wgetenv_s(&required, buffer, 8, kName)); // some C runtimes report a failure
    EXPECT_EQ(required, 0U);
}

TEST_F(Environment, NullBuffer_ReturnsTheLength)
{
    const ScopedVariable variable("ORVEL_TEST_VARIABLE", "four");
    std::size_t required = 0;
    static_cast<void>(_wgetenv_s(&required, nullptr, 0, kName)); // some C runtimes report a value that does not fit
    EXPECT_EQ(required, 5U);
}

TEST_F(Environment, NullAndContradictingLengths_AreRefused)
{
    wchar_t buffer[8];
    std::size_t required = 0;
    EXPECT_EQ(_wgetenv_s(nullptr, buffer, 8, kName), EINVAL);
    EXPECT_EQ(_wgetenv_s(&required, nullptr, 8, kName), EINVAL);
    EXPECT_EQ(_wgetenv_s(&required, buffer, 0, kName), EINVAL);
    EXPECT_EQ(_wgetenv_s(&required, buffer, 8, nullptr), EINVAL);
}

TEST_F(Environment, InjectedFault_FailsTheCall)
{
    const ScopedVariable variable("ORVEL_TEST_VARIABLE", "value");
    wchar_t buffer[8];
    std::size_t required = 0;
    const Embedded::ScopedFault fault({.call = "_wgetenv_s", .code = {}});
    EXPECT_EQ(_wgetenv_s(&required, buffer, 8, kName), ENOMEM);
}

} // namespace
