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

/// Whether the user lacks the right to read the file in use, or to make it where it is absent.
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

RegistryFailure registryFailure(const SqlFailure& failure)
{
    const std::string reason = failure.message.substr(0, failure.message.find('\n')); // what follows is of the schema
    switch (failure.primaryCode()) {
    case SQLITE_NOTADB:
        return RegistryFailure(ERROR_REGISTRY_CORRUPT, "is not a database; choose another file");
    case SQLITE_CORRUPT:
    case SQLITE_ERROR: // statements that are always the same fail where the tables are not those expected
    case SQLITE_CONSTRAINT:
    case SQLITE_SCHEMA:
        return RegistryFailure(ERROR_REGISTRY_CORRUPT, "is damaged: " + reason + "; restore the file from a copy");
    case SQLITE_BUSY:
        return RegistryFailure(ERROR_REGISTRY_IO_FAILED,
                               "is locked by another process; try again when that process is done");
    case SQLITE_READONLY:
    case SQLITE_PERM:
        return RegistryFailure(ERROR_ACCESS_DENIED, "cannot be written: " + reason);
    case SQLITE_CANTOPEN:
        if (isForbidden())
            return RegistryFailure(ERROR_ACCESS_DENIED, "cannot be opened: the user lacks the right to");
        [[fallthrough]];
    default:
        return RegistryFailure(ERROR_REGISTRY_IO_FAILED, "cannot be used: " + reason);
    }
}

} // namespace

std::optional<RegistryFailure> registryFailureOf(const std::function<void()>& work)
{
    try {
        if (const auto failure = sqlFailureOf(work))
            throw registryFailure(*failure);
        return std::nullopt;
    } catch (const RegistryFailure& failure) {
        if (failure.code == ERROR_REGISTRY_CORRUPT)
            disconnectRegistry();
        return failure;
    }
}

} // namespace Embedded
