#include <sqlite3.h>

#include "embedded/diagnostics/fault_injection.h"
#include "windows/posix/registry_file_test.h"

namespace Tests {
namespace {

using Embedded::ScopedFault;

class RegistryFaultsStandIn : public RegistryFileTest {
protected:
    /// What SQLite may allocate beyond what it holds now, for the length of a scope.
    class ScopedMemory {
    public:
        explicit ScopedMemory(sqlite3_int64 bytes) { sqlite3_hard_heap_limit64(sqlite3_memory_used() + bytes); }
        ScopedMemory(const ScopedMemory&) = delete;
        ScopedMemory& operator=(const ScopedMemory&) = delete;
        ~ScopedMemory() { sqlite3_hard_heap_limit64(0); }
    };
};

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

// From too little for the first step on to enough.
TEST_F(RegistryFaultsStandIn, ShortMemory_IsReportedAndChangesNothing)
{
    const OpenKey key = created();
    ASSERT_EQ(set(key, L"a", L"old"), ERROR_SUCCESS);
    int shortages = 0;
    LSTATUS status = ERROR_OUTOFMEMORY;
    for (sqlite3_int64 bytes = 500; status != ERROR_SUCCESS; bytes += 500) {
        ASSERT_LT(bytes, 1'000'000);
        Embedded::useRegistryFile(file);
        {
            const ScopedMemory memory(bytes);
            status = set(key, L"a", L"new");
        }
        if (status == ERROR_SUCCESS)
            break;
        ++shortages;
        ASSERT_EQ(status, ERROR_OUTOFMEMORY) << bytes;
        ASSERT_EQ(textOf(key, L"a"), ended(L"old")) << bytes;
    }
    EXPECT_EQ(textOf(key, L"a"), ended(L"new"));
    EXPECT_GT(shortages, 10);
}

TEST_F(RegistryFaultsStandIn, DataThatIsTooLongIsRefusedBeforeItIsRead)
{
    const OpenKey key = created();
    const BYTE data[] = {1};
    EXPECT_EQ(RegSetValueExW(key.get(), L"a", 0, REG_BINARY, data, 1'000'000'001), ERROR_OUTOFMEMORY);
    EXPECT_EQ(bytesOf(key, L"a"), std::nullopt);
}

} // namespace
} // namespace Tests
