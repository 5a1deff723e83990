// Another connection has locked the file.
#include <sqlite3.h>

#include <chrono>

#include "windows/registry_test.h"

namespace Tests {
namespace {

using std::chrono::milliseconds;

class RegistryWait : public RegistryTest {
protected:
    RegistryWait()
    {
        Embedded::setRegistryWait(milliseconds(30), [this](milliseconds) {
            if (++waits == 3 && releasesLock)
                execute("ROLLBACK");
        });
        EXPECT_EQ(sqlite3_open(file.c_str(), &other), SQLITE_OK);
    }
    ~RegistryWait() override
    {
        sqlite3_close(other);
        Embedded::setRegistryWait(milliseconds(10'000));
    }
    void execute(const char* statement)
    {
        EXPECT_EQ(sqlite3_exec(other, statement, nullptr, nullptr, nullptr), SQLITE_OK);
    }

    OpenKey key = createKey();
    sqlite3* other = nullptr;
    bool releasesLock = false;
    int waits = 0;
};

TEST_F(RegistryWait, Change_WaitsForAnotherChange)
{
    releasesLock = true;
    execute("BEGIN IMMEDIATE");
    EXPECT_EQ(setText(key, L"a", L"text"), ERROR_SUCCESS);
    EXPECT_EQ(waits, 3);
    EXPECT_EQ(readText(key, L"a"), withNul(L"text"));
}

TEST_F(RegistryWait, Change_FailsAfterTheLongestWait)
{
    execute("BEGIN IMMEDIATE");
    EXPECT_EQ(setText(key, L"a", L"text"), ERROR_REGISTRY_IO_FAILED);
    EXPECT_GT(waits, 1);
    EXPECT_EQ(readText(key, L"a"), std::nullopt) << "reading waits only while the other one commits";
    execute("ROLLBACK");
    EXPECT_EQ(setText(key, L"a", L"text"), ERROR_SUCCESS);
}

TEST_F(RegistryWait, Read_WaitsForACommit)
{
    execute("BEGIN EXCLUSIVE");
    EXPECT_EQ(openStatus(L""), ERROR_REGISTRY_IO_FAILED);
    EXPECT_EQ(registryFault(), file.string() + ": is locked by another process; try again when that process is done");
    waits = 0;
    releasesLock = true;
    EXPECT_EQ(openStatus(L""), ERROR_SUCCESS);
    EXPECT_EQ(waits, 3);
}

} // namespace
} // namespace Tests
