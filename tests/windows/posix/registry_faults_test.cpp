#include "embedded/foundation/faults.h"
#include "windows/posix/registry_file_test.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;

class RegistryFaultsStandIn : public RegistryFileTest {};

TEST_F(RegistryFaultsStandIn, AFirstSaveThatFailsLeavesNoFile)
{
    for (const char* const step : {"open", "write", "sync", "rename"}) {
        const ScopedFault fault({.call = std::string("writeFileAtomically.") + step, .code = {}});
        HKEY made = nullptr;
        EXPECT_NE(create(L"Other", &made), ERROR_SUCCESS) << step;
        EXPECT_EQ(made, nullptr);
        EXPECT_FALSE(std::filesystem::exists(file));
    }
}

TEST_F(RegistryFaultsStandIn, AFailureChangesNothingInTheFile)
{
    const OpenKey key = created();
    ASSERT_EQ(set(key, L"a", L"text"), ERROR_SUCCESS);
    const std::string before = onDisk();
    HKEY made = nullptr;
    const ScopedFault fault({.call = "", .fromThenOn = true, .code = ERROR_ACCESS_DENIED});
    EXPECT_EQ(create(L"Other", &made), ERROR_ACCESS_DENIED);
    EXPECT_EQ(set(key, L"a", L"other"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegDeleteValueW(key.get(), L"a"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(onDisk(), before);
}

} // namespace
} // namespace Tests
