#include "embedded/windows/registry_connection.h"

#include <unistd.h>

#include <algorithm>
#include <memory>
#include <new>
#include <string>
#include <system_error>
#include <utility>

#include "embedded/windows/registry_call.h"
#include "embedded/windows/registry_file.h"
#include "embedded/windows/registry_row.h"

namespace Embedded {
namespace {

namespace fs = std::filesystem;

constexpr std::int32_t kApplicationId = 0x4F727267; // "Orrg"
constexpr int kFormat = 1;
// The comments are for readers of the schema.
constexpr const char* kTable = R"(CREATE TABLE registry (
  id INTEGER PRIMARY KEY,    -- in the order of creation
  owner INTEGER NOT NULL,    -- 0 for a key; for a value, the id of its key
  name ANY NOT NULL,         -- the path of a key, the name of a value
  folded ANY NOT NULL,       -- the same in lower case, to find it by
  type INTEGER NOT NULL,     -- of a value
  data ANY NOT NULL,         -- TEXT for types 1 and 2, otherwise a BLOB
  checksum INTEGER NOT NULL, -- over all other columns
  UNIQUE (owner, folded)
) STRICT)";

std::unique_ptr<RegistryConnection>& currentConnection()
{
    static std::unique_ptr<RegistryConnection> connection;
    return connection;
}

[[noreturn]] void refuse(const std::string& reason)
{
    failRegistryCall(ERROR_REGISTRY_CORRUPT, reason);
}

} // namespace

// SQLite gives names such as ":memory:" a meaning of their own, but not absolute paths.
RegistryConnection::RegistryConnection(fs::path file, bool creates)
    : file_(std::move(file)),
      process_(::getpid()),
      database_(fs::absolute(file_).string(), SQLite::OPEN_READWRITE | (creates ? SQLite::OPEN_CREATE : 0))
{
    makeDefensive(database_.getHandle());
    setWait(database_.getHandle(), registryWait());
    database_.exec("PRAGMA synchronous = FULL");
}

bool RegistryConnection::isInherited() const
{
    return process_ != ::getpid();
}

bool RegistryConnection::isUsableFor(const fs::path& file) const
{
    return !isInherited() && file_ == file && !isStale();
}

bool RegistryConnection::isStale() const
{
    int hasMoved = 0;
    sqlite3_file_control(database_.getHandle(), "main", SQLITE_FCNTL_HAS_MOVED, &hasMoved);
    return hasMoved != 0;
}

unsigned RegistryConnection::version() const
{
    unsigned version = 0;
    sqlite3_file_control(database_.getHandle(), "main", SQLITE_FCNTL_DATA_VERSION, &version);
    return version;
}

bool RegistryConnection::hasRegistry()
{
    const int application = database_.execAndGet("PRAGMA application_id").getInt();
    if (application == 0 && database_.execAndGet("PRAGMA schema_version").getInt() == 0)
        return false; // the file is empty
    if (application != kApplicationId)
        refuse("is a database, but not a registry; choose another file");
    const int format = database_.execAndGet("PRAGMA user_version").getInt();
    if (format != kFormat)
        refuse("has format " + std::to_string(format) + ", but only format " + std::to_string(kFormat) +
               " is known here; use the program that wrote it");
    if (!isChecked_)
        checkContent();
    isChecked_ = true;
    return true;
}

void RegistryConnection::checkContent()
{
    if (database_.execAndGet("PRAGMA journal_mode").getString() != "delete" ||
        database_.execAndGet("SELECT group_concat(sql, ';') FROM sqlite_schema").getString() != kTable)
        refuse("has other tables than a registry; restore the file from a copy");
    std::string verdict = database_.execAndGet("PRAGMA integrity_check(1)").getString();
    if (verdict.ends_with("error code=" + std::to_string(SQLITE_NOMEM))) // the page that it names is not at fault
        throw std::bad_alloc();
    std::ranges::replace(verdict, '\n', ' ');
    if (verdict != "ok")
        refuse("is damaged: " + verdict + "; restore the file from a copy");
    SQLite::Statement rows(database_, "SELECT * FROM registry");
    while (rows.executeStep())
        static_cast<void>(readRow(rows)); // only checks the row: throws if its checksum does not fit
}

void RegistryConnection::createTable()
{
    database_.exec("PRAGMA application_id = " + std::to_string(kApplicationId) +
                   "; PRAGMA user_version = " + std::to_string(kFormat) + "; " + kTable);
}

RegistryConnection* connectRegistry(bool creates)
{
    const fs::path file = registryFile();
    std::unique_ptr<RegistryConnection>& connection = currentConnection();
    if (connection && !connection->isUsableFor(file))
        disconnectRegistry();
    if (connection)
        return connection.get();
    if (file.empty() && creates)
        failRegistryCall(ERROR_REGISTRY_IO_FAILED);
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (status.type() == fs::file_type::not_found && !creates)
        return nullptr;
    if (fs::exists(status) && !fs::is_regular_file(status))
        refuse(fs::is_directory(status) ? "is a folder; choose another file" : "is not a file; choose another file");
    if (creates)
        fs::create_directories(file.parent_path(), error); // if this fails, opening the file fails too
    connection = std::make_unique<RegistryConnection>(file, creates);
    return connection.get();
}

void disconnectRegistry()
{
    std::unique_ptr<RegistryConnection>& connection = currentConnection();
    // SQLite allows a child process neither to use nor to close a connection of its parent.
    if (connection && connection->isInherited())
        static_cast<void>(connection.release());
    connection.reset();
}

LockWait& registryWait()
{
    static LockWait wait;
    return wait;
}

} // namespace Embedded
