#include <functional>

#include "embedded/diagnostics/fault_injection.h"
#include "registry_test.h"

namespace Tests {
namespace {

using Embedded::FaultInjection;
using Embedded::ScopedFault;

class RegistryFaults : public RegistryTest {
protected:
    OpenKey key = createKey();
};

TEST_F(RegistryFaults, InjectedFault_FailsEachCallAndChangesNothing)
{
    ASSERT_EQ(setText(key, L"a", L"text"), ERROR_SUCCESS);
    wchar_t name[8];
    DWORD length = 8;
    struct Case {
        const char* call;
        LSTATUS code;
        std::function<LSTATUS()> make;
    };
    HKEY made = nullptr;
    const Case table[] = {
        {"RegCreateKeyExW", ERROR_ACCESS_DENIED, [&] { return create(L"Other", &made); }},
        {"RegOpenKeyExW", ERROR_ACCESS_DENIED, [&] { return openStatus(L""); }},
        {"RegSetValueExW", ERROR_ACCESS_DENIED, [&] { return setText(key, L"a", L"other"); }},
        {"RegQueryValueExW", ERROR_FILE_NOT_FOUND, [&] { return queryStatus(key, L"a"); }},
        {"RegEnumValueW", ERROR_NO_MORE_ITEMS, [&] { return enumerateName(key, 0, name, &length); }},
        {"RegDeleteValueW", ERROR_ACCESS_DENIED, [&] { return RegDeleteValueW(key.get(), L"a"); }},
    };
    for (const Case& row : table) {
        {
            const ScopedFault fault({.call = row.call, .code = {}});
            EXPECT_EQ(row.make(), row.code) << row.call;
            EXPECT_EQ(FaultInjection::failedCalls(), 1U) << row.call;
        }
        const ScopedFault fault({.call = row.call, .code = ERROR_REGISTRY_IO_FAILED});
        EXPECT_EQ(row.make(), ERROR_REGISTRY_IO_FAILED) << row.call;
    }
    EXPECT_EQ(made, nullptr);
    EXPECT_EQ(openStatus(L"Other"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(readText(key, L"a"), withNul(L"text"));
    EXPECT_EQ(valueNames(key).size(), 1U);
}

TEST_F(RegistryFaults, Enumeration_EndsWhenItAlwaysFails)
{
    ASSERT_EQ(setText(key, L"a", L"text"), ERROR_SUCCESS);
    const ScopedFault fault({.call = "RegEnumValueW", .fromThenOn = true, .code = {}});
    EXPECT_TRUE(valueNames(key).empty());
}

TEST_F(RegistryFaults, Close_NeverFails)
{
    FaultInjection::watch();
    createKey();
    EXPECT_EQ(FaultInjection::seen(), std::vector<std::string>{"RegCreateKeyExW"});
}

} // namespace
} // namespace Tests
