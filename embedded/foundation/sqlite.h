// What every use of SQLite begins with and ends in.
#pragma once

#include <chrono>
#include <functional>
#include <new>
#include <optional>
#include <string>
#include <utility>

#include <SQLiteCpp/SQLiteCpp.h>
#include <sqlite3.h>

#include "platform/export.h"

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
        return SqlFailure{exception.getExtendedErrorCode(), exception.what()};
    }
}

/// Prepares a connection for a file that anybody may have written: nothing in its schema is trusted, no trigger, view,
/// extension or second file is used, every page is checked as it is read, references are enforced, and what has changed
/// stays in memory until the commit, so that others can read until then.
FQCORE_API void makeDefensive(sqlite3* connection);

/// How long a connection waits for another process.
struct SqlWait {
    std::chrono::milliseconds most{10000};
    /// Called again and again while it waits; may be empty.
    std::function<void(std::chrono::milliseconds waited)> waiting;
    std::chrono::steady_clock::time_point began; // of the wait that is going on
};

/// Pauses between two attempts to get what another process holds. `attempt` counts from 0. False when the time is over.
[[nodiscard]] FQCORE_API bool waitOnce(SqlWait& wait, int attempt);

/// The connection waits so from now on. `wait` must outlive it.
FQCORE_API void setWait(sqlite3* connection, SqlWait& wait);

} // namespace Embedded
