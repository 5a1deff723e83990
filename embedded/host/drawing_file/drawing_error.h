// Failures of SQLite as Errors of the host.
#pragma once

#include <string>
#include <type_traits>

#include "embedded/host/database/host_error.h"
#include "embedded/host/drawing_file/drawing_connection.h"

namespace Embedded {

/// What an Error of catchSqlError means for a drawing file. The place is empty. `connection` may be null.
Error drawingError(const Error& failure, sqlite3* connection);

/// Returns whether the file begins as SQLite databases do.
bool isDatabase(sqlite3* connection);

/// Runs `work` on the connection's file and returns what stopped it: an exception of SQLiteCpp or an ErrorException,
/// with the name of the file before its place; or the Error that `work` returns, as it is. Throws std::bad_alloc when
/// memory is short.
template <class Work>
Expected<void> catchDrawingError(const DrawingConnection& connection, const std::string& file, Work work)
{
    try {
        Expected<void> result;
        const Expected<void> done = catchSqlError([&] {
            if constexpr (std::is_void_v<std::invoke_result_t<Work>>)
                work();
            else
                result = work();
        });
        if (!done)
            return failure(inFile(file, drawingError(done.error(), connection.handle())));
        return result;
    } catch (const ErrorException& exception) {
        return failure(inFile(file, exception.error()));
    }
}

} // namespace Embedded
