#include <sqlite3.h>

#include "embedded/diagnostics/fault_injection.h"
#include "support/file_text.h"
#include "windows/registry_test.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;

class RegistryFaultsStandIn : public RegistryTest {
protected:
    /// Lets SQLite allocate only so many more bytes during a scope.
    class ScopedMemory {
    public:
        explicit ScopedMemory(sqlite3_int64 bytes) { sqlite3_hard_heap_limit64(sqlite3_memory_used() + bytes); }
        ScopedMemory(const ScopedMemory&) = delete;
        ScopedMemory& operator=(const ScopedMemory&) = delete;
        ~ScopedMemory() { sqlite3_hard_heap_limit64(0); }
    };
};

TEST_F(RegistryFaultsStandIn, Failure_LeavesTheFileUnchanged)
{
    const OpenKey key = createKey();
    ASSERT_EQ(setText(key, L"a", L"text"), ERROR_SUCCESS);
    const std::string before = readFile(file);
    HKEY made = nullptr;
    const ScopedFault fault({.call = "", .fromThenOn = true, .code = ERROR_ACCESS_DENIED});
    EXPECT_EQ(create(L"Other", &made), ERROR_ACCESS_DENIED);
    EXPECT_EQ(setText(key, L"a", L"other"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegDeleteValueW(key.get(), L"a"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(readFile(file), before);
}

// Increases the memory until it suffices.
TEST_F(RegistryFaultsStandIn, OutOfMemory_IsReportedAndChangesNothing)
{
    const OpenKey key = createKey();
    ASSERT_EQ(setText(key, L"a", L"old"), ERROR_SUCCESS);
    int failures = 0;
    LSTATUS status = ERROR_OUTOFMEMORY;
    for (sqlite3_int64 bytes = 500; status != ERROR_SUCCESS; bytes += 500) {
        ASSERT_LT(bytes, 1'000'000);
        Embedded::useRegistryFile(file);
        {
            const ScopedMemory memory(bytes);
            status = setText(key, L"a", L"new");
        }
        if (status == ERROR_SUCCESS)
            break;
        ++failures;
        ASSERT_EQ(status, ERROR_OUTOFMEMORY) << bytes;
        ASSERT_EQ(readText(key, L"a"), withNul(L"old")) << bytes;
    }
    EXPECT_EQ(readText(key, L"a"), withNul(L"new"));
    EXPECT_GT(failures, 10);
}

TEST_F(RegistryFaultsStandIn, TooLongData_AreRefusedBeforeTheyAreRead)
{
    const OpenKey key = createKey();
    const BYTE data[] = {1};
    EXPECT_EQ(RegSetValueExW(key.get(), L"a", 0, REG_BINARY, data, 1'000'000'001), ERROR_OUTOFMEMORY);
    EXPECT_EQ(readBytes(key, L"a"), std::nullopt);
}

} // namespace
} // namespace Tests
