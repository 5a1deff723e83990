#include "embedded/windows/registry_call.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "embedded/base/sqlite.h"
#include "embedded/windows/registry_connection.h"
#include "embedded/windows/registry_file.h"

namespace Embedded {
namespace {

/// Returns whether the user has no permission to read the file in use, or to create it when it is missing.
bool isForbidden()
{
    const std::filesystem::path file = registryFile();
    const auto may = [](const std::filesystem::path& path, int right) {
        return ::faccessat(AT_FDCWD, path.c_str(), right, AT_EACCESS) == 0;
    };
    if (may(file, R_OK) || (errno == ENOENT && may(file.parent_path(), W_OK)))
        return false;
    return errno == EACCES || errno == EPERM || errno == EROFS;
}

Error registryError(const Error& sqlError)
{
    const std::string reason = sqlError.message.substr(0, sqlError.message.find('\n')); // the schema follows
    switch (primarySqlCode(sqlError)) {
    case SQLITE_NOTADB:
        return {ERROR_REGISTRY_CORRUPT, "is not a database; choose another file", {}};
    case SQLITE_CORRUPT:
    case SQLITE_ERROR: // a fixed statement fails when a table is not the expected one
    case SQLITE_CONSTRAINT:
    case SQLITE_SCHEMA:
        return {ERROR_REGISTRY_CORRUPT, "is damaged: " + reason + "; restore the file from a copy", {}};
    case SQLITE_BUSY:
        return {ERROR_REGISTRY_IO_FAILED, "is locked by another process; try again when that process is done", {}};
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return {ERROR_ACCESS_DENIED, "cannot be written: " + reason, {}};
    case SQLITE_CANTOPEN:
        if (isForbidden())
            return {ERROR_ACCESS_DENIED, "cannot be opened: the user lacks the right to", {}};
        [[fallthrough]];
    default:
        return {ERROR_REGISTRY_IO_FAILED, "cannot be used: " + reason, {}};
    }
}

} // namespace

Expected<void> catchRegistryError(const std::function<void()>& work)
{
    Expected<void> result = catchError([&] {
        if (const auto done = catchSqlError(work); !done)
            throw ErrorException(registryError(done.error()));
    });
    if (!result && result.error().status == ERROR_REGISTRY_CORRUPT)
        disconnectRegistry();
    return result;
}

} // namespace Embedded
