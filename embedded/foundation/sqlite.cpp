#include "embedded/foundation/sqlite.h"

#include <algorithm>
#include <array>
#include <thread>
#include <utility>

namespace Embedded {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kLongestPause{50};

// Called by SQLite between two attempts; 0 gives up.
int whenBusy(void* wait, int attempt)
{
    return waitOnce(*static_cast<SqlWait*>(wait), attempt) ? 1 : 0;
}

} // namespace

bool waitOnce(SqlWait& wait, int attempt)
{
    const auto now = std::chrono::steady_clock::now();
    if (attempt == 0)
        wait.began = now;
    const auto waited = std::chrono::duration_cast<milliseconds>(now - wait.began);
    if (waited >= wait.most)
        return false;
    if (wait.waiting)
        wait.waiting(waited);
    std::this_thread::sleep_for(std::min({milliseconds(1 + attempt), kLongestPause, wait.most - waited}));
    return true;
}

void makeDefensive(sqlite3* connection)
{
    sqlite3_extended_result_codes(connection, 1);
    constexpr std::array kSettings = {
        std::pair(SQLITE_DBCONFIG_DEFENSIVE, 1),      std::pair(SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0),
        std::pair(SQLITE_DBCONFIG_ENABLE_TRIGGER, 0), std::pair(SQLITE_DBCONFIG_ENABLE_VIEW, 0),
        std::pair(SQLITE_DBCONFIG_DQS_DDL, 0),        std::pair(SQLITE_DBCONFIG_DQS_DML, 0),
        std::pair(SQLITE_DBCONFIG_ENABLE_FKEY, 1),
    };
    for (const auto& [setting, value] : kSettings)
        sqlite3_db_config(connection, setting, value, nullptr);
    sqlite3_limit(connection, SQLITE_LIMIT_ATTACHED, 0);
    for (const char* pragma : {"PRAGMA cell_size_check = ON", "PRAGMA cache_spill = OFF", "PRAGMA mmap_size = 0"})
        sqlite3_exec(connection, pragma, nullptr, nullptr, nullptr);
}

void setWait(sqlite3* connection, SqlWait& wait)
{
    sqlite3_busy_handler(connection, whenBusy, &wait);
}

} // namespace Embedded
