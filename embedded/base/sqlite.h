// The settings of every SQLite connection, and the end of SQLiteCpp's exceptions. Everything is inline, since on
// Windows each library that uses SQLite has an SQLite of its own.
#pragma once

#include <array>
#include <new>
#include <type_traits>
#include <utility>

#include <SQLiteCpp/Backup.h>
#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

#include "embedded/base/error.h"
#include "embedded/base/lock_wait.h"

namespace Embedded {

/// Returns what `work` returns, or why SQLite refused it: the status is SQLite's extended result code, the message is
/// SQLite's. Every exception of SQLiteCpp ends here. Throws std::bad_alloc when memory is short.
template <class Work>
auto catchSqlError(Work&& work) -> Expected<std::invoke_result_t<Work>>
{
    try {
        return callExpected(std::forward<Work>(work));
    } catch (const SQLite::Exception& exception) {
        if (exception.getErrorCode() == SQLITE_NOMEM)
            throw std::bad_alloc();
        const bool hasExtendedCode = exception.getExtendedErrorCode() >= 0; // there is none without a connection
        return failure(hasExtendedCode ? exception.getExtendedErrorCode() : exception.getErrorCode(), exception.what());
    }
}

/// SQLite's primary result code of an Error that `catchSqlError` returns.
inline int primarySqlCode(const Error& error)
{
    return error.status & 0xFF;
}

/// Prepares a connection for a file that anybody may have written. Nothing in its schema is trusted. Triggers, views,
/// extensions and attached files are off. Every page is checked when it is read, and references are enforced. Changes
/// stay in memory until the commit, so that others can read until then.
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

/// Makes the connection wait in this way for other processes. `wait` must outlive the connection.
inline void setWait(sqlite3* connection, LockWait& wait)
{
    const auto whenBusy = [](void* context, int attempt) {
        return static_cast<LockWait*>(context)->pause(attempt) ? 1 : 0;
    };
    sqlite3_busy_handler(connection, whenBusy, &wait);
}

} // namespace Embedded
