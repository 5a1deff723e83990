#include "embedded/host/drawing_file/drawing_error.h"

#include <system_error>

#include "embedded/host/drawing_file/drawing_file.h"

namespace Embedded {
namespace {

std::string systemReason(sqlite3* connection)
{
    const int error = connection != nullptr ? sqlite3_system_errno(connection) : 0;
    return error != 0 ? ": " + std::system_category().message(error) : "";
}

std::string notADatabaseMessage(sqlite3* connection)
{
    const std::string beginning = connection != nullptr ? beginningOfFile(connection) : std::string();
    if (beginning.starts_with("{\n  \"format\": \"embedded host drawing\""))
        return "is a drawing of format 1, which is not read any more";
    return "not a drawing file: it is not an SQLite database";
}

Error readOnlyError(int code)
{
    switch (code) {
    case SQLITE_READONLY_DBMOVED:
        return {Qeapp::eFileChanged, "was moved, removed or replaced since it was opened; open it again", {}};
    case SQLITE_READONLY_ROLLBACK:
    case SQLITE_READONLY_CANTINIT:
        return {Qeapp::eFileDamaged,
                "an interrupted save has left a journal beside it, which cannot be rolled back "
                "because the file or its folder is write-protected",
                {}};
    case SQLITE_READONLY_DIRECTORY:
        return {Qeapp::eFileWriteFailed, "its folder is write-protected, and a save needs a journal there", {}};
    default:
        return {Qeapp::eFileWriteFailed, "is write-protected", {}};
    }
}

Error inputOutputError(const Error& failure, sqlite3* connection)
{
    const std::string reason = systemReason(connection);
    switch (failure.status) {
    case SQLITE_IOERR_LOCK:
    case SQLITE_IOERR_UNLOCK:
    case SQLITE_IOERR_RDLOCK:
    case SQLITE_IOERR_CHECKRESERVEDLOCK:
        return {Qeapp::eFileLocked,
                "cannot be locked, perhaps because it lies on a network drive without locks" + reason,
                {}};
    case SQLITE_IOERR_READ:
    case SQLITE_IOERR_SHORT_READ:
    case SQLITE_IOERR_CORRUPTFS:
        return {Qeapp::eFileDamaged, "cannot be read" + reason, {}};
    case SQLITE_IOERR_DELETE:
        return {Qeapp::eFileWriteFailed, "the journal that a save has beside it cannot be removed" + reason, {}};
    case SQLITE_IOERR_NOMEM:
        return {Qeapp::eOutOfMemory, "not enough memory for the drawing", {}};
    default:
        return {Qeapp::eFileWriteFailed, "cannot be written" + (reason.empty() ? ": " + failure.message : reason), {}};
    }
}

} // namespace

bool isDatabase(sqlite3* connection)
{
    return (connection != nullptr ? beginningOfFile(connection) : std::string()).starts_with(kDatabaseBeginning);
}

Error drawingError(const Error& failure, sqlite3* connection)
{
    switch (primarySqlCode(failure)) {
    case SQLITE_BUSY:
        return {Qeapp::eFileLocked, "another process is using it and did not release it in time", {}};
    case SQLITE_NOTADB:
        return {Qeapp::eFileDamaged, notADatabaseMessage(connection), {}};
    case SQLITE_CORRUPT:
        return {Qeapp::eFileDamaged, "is damaged: " + failure.message, {}};
    case SQLITE_FULL:
        return {Qeapp::eFileWriteFailed, "cannot be written: the disk is full", {}};
    case SQLITE_READONLY:
        return readOnlyError(failure.status);
    case SQLITE_CANTOPEN:
        return {
            Qeapp::eFileWriteFailed, "it, or its journal beside it, cannot be opened" + systemReason(connection), {}};
    case SQLITE_IOERR:
        return inputOutputError(failure, connection);
    case SQLITE_CONSTRAINT:
    case SQLITE_TOOBIG:
        return {Qeapp::eInvalidInput, "would not be readable: " + failure.message, {}};
    default:
        return {Qeapp::eFileDamaged, "is damaged: " + failure.message, {}};
    }
}

} // namespace Embedded
