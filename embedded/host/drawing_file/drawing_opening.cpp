#include "embedded/host/drawing_file/drawing_opening.h"

#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

#include "embedded/base/file_kind.h"
#include "embedded/base/path.h"
#include "embedded/host/database/handle.h"
#include "embedded/host/drawing_file/drawing_error.h"
#include "embedded/host/drawing_file/drawing_file.h"
#include "embedded/host/drawing_file/drawing_schema.h"
#include "embedded/host/drawing_file/drawing_store.h"
#include "platform/host/symbol_table.h"

namespace Embedded {
namespace {

namespace fs = std::filesystem;

std::int64_t pragma(SQLite::Database& database, const char* sql)
{
    return database.execAndGet(sql).getInt64();
}

/// The log would be a second file beside the drawing, and readers would need memory that they share with writers.
void requireNoWriteAheadLog(const DrawingConnection& connection)
{
    constexpr std::string_view kRollback("\1\1", 2); // to be written, and to be read
    const std::string beginning = beginningOfFile(connection.handle());
    if (beginning.starts_with(kDatabaseBeginning) && beginning.substr(18, 2) != kRollback)
        throwDamage("is in SQLite's write-ahead mode, which drawing files are never in");
}

/// Nothing but the database's header and schema is read.
void requireDrawing(DrawingConnection& connection)
{
    SQLite::Database& database = connection.database();
    const std::int64_t application = pragma(database, "PRAGMA application_id"); // also rolls back a killed save
    if (connection.fileSize() == 0)
        throwDamage("is empty, not a drawing");
    if (application != DrawingSchema::kApplicationId)
        throwDamage("is a database of another application (its application_id is " + std::to_string(application) + ")");
    const std::int64_t format = pragma(database, "PRAGMA user_version");
    if (format > DrawingSchema::kFormat)
        throwError(Qeapp::eFileTooNew, "is of format " + std::to_string(format) + "; this version reads format " +
                                           std::to_string(DrawingSchema::kFormat));
    if (format != DrawingSchema::kFormat)
        throwDamage("has an unknown format (its user_version is " + std::to_string(format) + ")");
    DrawingSchema::require(database);
}

void begin(DrawingConnection& connection, DrawingAccess access)
{
    if (access == DrawingAccess::changing && sqlite3_db_readonly(connection.handle(), "main") != 0)
        throwError(Qeapp::eFileWriteFailed, "is write-protected");
    requireNoWriteAheadLog(connection);
    connection.database().exec(access == DrawingAccess::changing ? "BEGIN IMMEDIATE" : "BEGIN");
    requireDrawing(connection);
}

void fillRoots(QeHost::DatabaseImp& imp, const DrawingHeader& header)
{
    imp.nextHandle = header.nextHandle;
    imp.namedObjects = &imp.storedRecord(header.namedObjects);
    imp.regAppTable = &imp.storedRecord(header.regAppTable);
    imp.blockTable = &imp.storedRecord(header.blockTable);
    imp.modelSpace = &imp.storedRecord(header.modelSpace);
    if (header.geoData != 0)
        imp.geoDataObjects.push_back(&imp.storedRecord(header.geoData));
    // Extended data are kept under the applications' records.
    if (!QeHost::loadObject(*imp.regAppTable).isKindOf(QeDbRegAppTable::desc()))
        imp.store->throwDamage(header.regAppTable, "is not the table of registered applications");
}

} // namespace

Expected<std::unique_ptr<QeDbDatabase>> attachDrawing(std::unique_ptr<DrawingConnection> connection,
                                                      const fs::path& file, const std::string& name, bool isShared)
{
    return catchError([&] {
        DrawingConnection& opened = *connection;
        auto store = std::make_unique<DrawingStore>(std::move(connection), file, name);
        const DrawingHeader header = store->header();
        auto database = std::make_unique<QeDbDatabase>(static_cast<QeDb::QeDbDwgVersion>(header.version));
        database->imp().clear();
        database->imp().store = std::move(store);
        fillRoots(database->imp(), header);
        if (isShared)
            opened.rollBack();
        return database;
    });
}

std::string sqliteName(const fs::path& file)
{
    // SQLite takes ":memory:" and what begins with "file:" for something else.
    const auto utf8 = systemPath(file.is_relative() ? fs::path(".") / file : file).u8string();
    return {utf8.begin(), utf8.end()};
}

Expected<void> requireOneName(const fs::path& file)
{
    std::error_code error;
    const std::uintmax_t names = fs::hard_link_count(file, error);
    if (error || names <= 1)
        return {};
    return failure(Qeapp::eFileWriteFailed,
                   "has " + std::to_string(names) +
                       " names (hard links), and is not changed under any of them; copy it to a file of its own");
}

Expected<void> requireRegularFile(const fs::path& file)
{
    Expected<FileKind> kind = fileKind(file);
    if (!kind)
        return failure(Qeapp::eFileNotFound, std::move(kind.error().message));
    if (*kind == FileKind::regular)
        return {};
    return failure(Qeapp::eFileDamaged, notRegularMessage(*kind));
}

Expected<std::unique_ptr<DrawingConnection>> connect(const fs::path& file, DrawingAccess access, const LockWait& wait)
{
    const std::string name = displayName(file);
    Expected<void> result = requireRegularFile(file);
    if (result && access == DrawingAccess::changing)
        result = requireOneName(file);
    if (!result)
        return failure(inFile(name, std::move(result).error()));
    // Also for reading: a journal that a killed process has left is rolled back first.
    std::unique_ptr<DrawingConnection> connection;
    const auto connected = catchSqlError(
        [&] { connection = std::make_unique<DrawingConnection>(sqliteName(file), SQLite::OPEN_READWRITE, wait); });
    if (!connected)
        return failure(Qeapp::eFileNotFound, "cannot be opened: " + std::generic_category().message(errno), name);
    result = catchDrawingError(*connection, name, [&] { begin(*connection, access); });
    if (!result)
        return failure(std::move(result).error());
    return connection;
}

Expected<std::unique_ptr<QeDbDatabase>> openDrawing(const fs::path& file, DrawingAccess access, const LockWait& wait)
{
    Expected<std::unique_ptr<DrawingConnection>> connection = connect(file, access, wait);
    if (!connection)
        return failure(std::move(connection).error());
    return attachDrawing(std::move(*connection), file, displayName(file), access == DrawingAccess::sharing);
}

Expected<std::unique_ptr<QeDbDatabase>> openDrawingFromBytes(const std::string& bytes)
{
    const std::string name = "standard input";
    auto connection = std::make_unique<DrawingConnection>(":memory:", SQLite::OPEN_READWRITE, LockWait());
    auto* const copy = static_cast<unsigned char*>(sqlite3_malloc64(bytes.size() + 1));
    if (copy == nullptr)
        throw std::bad_alloc();
    std::memcpy(copy, bytes.data(), bytes.size());
    const auto size = static_cast<sqlite3_int64>(bytes.size());
    sqlite3_deserialize(connection->handle(), "main", copy, size, size + 1,
                        SQLITE_DESERIALIZE_FREEONCLOSE | SQLITE_DESERIALIZE_RESIZEABLE);
    Expected<void> begun = catchDrawingError(*connection, name, [&] { begin(*connection, DrawingAccess::reading); });
    if (!begun)
        return failure(std::move(begun).error());
    return attachDrawing(std::move(connection), {}, name, true);
}

} // namespace Embedded
