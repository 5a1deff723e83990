// How work on a drawing file ended, as a status and a message of the host's.
#pragma once

#include <string>

#include "embedded/host/database/drawing_refusal.h"
#include "embedded/host/database/file_result.h"
#include "embedded/host/drawing_file/drawing_connection.h"

namespace Embedded {

/// What SQLite's refusal says of a drawing file, without the file's name. `connection` may be null where none came
/// about.
FileResult resultOf(const Error& failure, sqlite3* connection);

/// Whether the file begins as SQLite databases do.
bool isDatabase(sqlite3* connection);

/// eOk, or what stopped `work`, with the name of the file before it. Want of memory is std::bad_alloc.
template <class Work>
FileResult drawingResult(DrawingConnection& connection, const std::string& file, Work work)
{
    try {
        const auto done = catchSqlError(work);
        if (done)
            return {};
        FileResult result = resultOf(done.error(), connection.handle());
        return {result.status, file + ": " + result.message};
    } catch (const DrawingRefusal& refusal) {
        return {refusal.status, file + ": " + refusal.message};
    }
}

} // namespace Embedded
