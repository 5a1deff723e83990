// What every use of SQLite begins with and ends in. It is compiled into each library that uses SQLite: on Windows each
// has an SQLite of its own.
#pragma once

#include <array>
#include <new>
#include <optional>
#include <string>
#include <utility>

#include <SQLiteCpp/Backup.h>
#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

#include "embedded/base/sql_wait.h"

namespace Embedded {

/// How SQLite refused: its extended result code and its words.
struct SqlFailure {
    int code = SQLITE_ERROR;
    std::string message;

    int primaryCode() const { return code & 0xFF; }
};

/// Runs `work` and answers how SQLite refused it, or nothing. Every exception of SQLiteCpp ends here. Want of memory is
/// std::bad_alloc, wherever it was noticed.
template <class Work>
std::optional<SqlFailure> sqlFailureOf(Work&& work)
{
    try {
        std::forward<Work>(work)();
        return std::nullopt;
    } catch (const SQLite::Exception& exception) {
        if (exception.getErrorCode() == SQLITE_NOMEM)
            throw std::bad_alloc();
        const bool hasExtended = exception.getExtendedErrorCode() >= 0; // not without a connection
        return SqlFailure{hasExtended ? exception.getExtendedErrorCode() : exception.getErrorCode(), exception.what()};
    }
}

/// Prepares a connection for a file that anybody may have written: nothing in its schema is trusted, no trigger, view,
/// extension or second file is used, every page is checked as it is read, references are enforced, and what has changed
/// stays in memory until the commit, so that others can read until then.
inline void makeDefensive(sqlite3* connection)
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

/// The connection waits so from now on. `wait` must outlive it.
inline void setWait(sqlite3* connection, SqlWait& wait)
{
    const auto whenBusy = [](void* waited, int attempt) {
        return waitOnce(*static_cast<SqlWait*>(waited), attempt) ? 1 : 0;
    };
    sqlite3_busy_handler(connection, whenBusy, &wait);
}

} // namespace Embedded
