#include <functional>

#include "embedded/foundation/faults.h"
#include "registry_test.h"

namespace Tests {
namespace {

using Embedded::Faults;
using Embedded::ScopedFault;

class RegistryFaults : public RegistryTest {
protected:
    OpenKey key = created();
};

TEST_F(RegistryFaults, EachCallFailsOnRequestAndChangesNothing)
{
    ASSERT_EQ(set(key, L"a", L"text"), ERROR_SUCCESS);
    const std::string before = onDisk();
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
        {"RegSetValueExW", ERROR_ACCESS_DENIED, [&] { return set(key, L"a", L"other"); }},
        {"RegQueryValueExW", ERROR_FILE_NOT_FOUND,
         [&] { return RegQueryValueExW(key.get(), L"a", nullptr, nullptr, nullptr, nullptr); }},
        {"RegEnumValueW", ERROR_NO_MORE_ITEMS,
         [&] { return RegEnumValueW(key.get(), 0, name, &length, nullptr, nullptr, nullptr, nullptr); }},
        {"RegDeleteValueW", ERROR_ACCESS_DENIED, [&] { return RegDeleteValueW(key.get(), L"a"); }},
    };
    for (const Case& row : table) {
        {
            const ScopedFault fault({.call = row.call, .code = {}});
            EXPECT_EQ(row.make(), row.code) << row.call;
            EXPECT_EQ(Faults::struck(), 1U) << row.call;
        }
        const ScopedFault fault({.call = row.call, .code = ERROR_REGISTRY_IO_FAILED});
        EXPECT_EQ(row.make(), ERROR_REGISTRY_IO_FAILED) << row.call;
    }
    EXPECT_EQ(made, nullptr);
    EXPECT_EQ(onDisk(), before);
}

TEST_F(RegistryFaults, EnumeratingEndsAlsoWhenItAlwaysFails)
{
    ASSERT_EQ(set(key, L"a", L"text"), ERROR_SUCCESS);
    const ScopedFault fault({.call = "RegEnumValueW", .fromThenOn = true, .code = {}});
    EXPECT_TRUE(namesOf(key).empty());
}

TEST_F(RegistryFaults, ClosingIsNeverAmongTheFailures)
{
    Faults::watch();
    created();
    EXPECT_EQ(Faults::seen(), std::vector<std::string>{"RegCreateKeyExW"});
}

TEST_F(RegistryFaults, AFirstSaveThatFailsLeavesNoFile)
{
    std::filesystem::remove(file);
    for (const char* const step : {"open", "write", "sync", "rename"}) {
        const ScopedFault fault({.call = std::string("writeFileAtomically.") + step, .code = {}});
        HKEY made = nullptr;
        EXPECT_NE(create(L"Other", &made), ERROR_SUCCESS) << step;
        EXPECT_EQ(made, nullptr);
        EXPECT_FALSE(std::filesystem::exists(file));
    }
}

} // namespace
} // namespace Tests
