#include "embedded/host/drawing_file/drawing_opening.h"

#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

#include "embedded/base/file_kind.h"
#include "embedded/base/path.h"
#include "embedded/host/database/drawing_refusal.h"
#include "embedded/host/drawing_file/drawing_failure.h"
#include "embedded/host/drawing_file/drawing_store.h"
#include "embedded/host/drawing_file/schema.h"
#include "platform/host/symbol_table.h"

namespace Embedded {
namespace {

namespace fs = std::filesystem;

std::int64_t pragma(SQLite::Database& database, const char* sql)
{
    return database.execAndGet(sql).getInt64();
}

[[noreturn]] void refuse(Qeapp::ErrorStatus status, const std::string& message)
{
    throw DrawingRefusal{status, message};
}

/// The log would be a second file beside the drawing, and readers would need memory that they share with writers.
void requireNoWriteAheadLog(const DrawingConnection& connection)
{
    constexpr std::string_view kDatabase("SQLite format 3", 16); // the NUL belongs to it
    constexpr std::string_view kRollback("\1\1", 2);             // to be written, and to be read
    const std::string beginning = beginningOfFile(connection.handle());
    if (beginning.starts_with(kDatabase) && beginning.substr(18, 2) != kRollback)
        refuse(Qeapp::eFileDamaged, "is in SQLite's write-ahead mode, which drawing files are never in");
}

/// Nothing but the database's header and schema is read.
void requireDrawing(DrawingConnection& connection)
{
    SQLite::Database& database = connection.database();
    const std::int64_t application = pragma(database, "PRAGMA application_id"); // also rolls back a killed save
    if (connection.fileSize() == 0)
        refuse(Qeapp::eFileDamaged, "is empty, and so no drawing");
    if (application != DrawingSchema::kApplicationId)
        refuse(Qeapp::eFileDamaged,
               "is a database of another application (its application_id is " + std::to_string(application) + ")");
    const std::int64_t format = pragma(database, "PRAGMA user_version");
    if (format > DrawingSchema::kFormat)
        refuse(Qeapp::eFileTooNew, "is of format " + std::to_string(format) + "; this version reads format " +
                                       std::to_string(DrawingSchema::kFormat));
    if (format != DrawingSchema::kFormat)
        refuse(Qeapp::eFileDamaged, "is of no known format (its user_version is " + std::to_string(format) + ")");
    if (const std::string fault = DrawingSchema::faultOf(database); !fault.empty())
        refuse(Qeapp::eFileDamaged, fault);
}

void begin(DrawingConnection& connection, DrawingAccess access)
{
    if (access == DrawingAccess::changing && sqlite3_db_readonly(connection.handle(), "main") != 0)
        refuse(Qeapp::eFileWriteFailed, "is write-protected");
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
    if (!QeHost::loaded(*imp.regAppTable).isKindOf(QeDbRegAppTable::desc()))
        imp.store->refuse(placeOf(header.regAppTable) + "is no table of registered applications");
}

FileResult attach(std::unique_ptr<DrawingConnection> connection, const fs::path& path, const std::string& name,
                  bool isShared, std::unique_ptr<QeDbDatabase>& database)
{
    try {
        DrawingConnection& opened = *connection;
        auto store = std::make_unique<DrawingStore>(std::move(connection), path, name);
        const DrawingHeader header = store->header();
        auto made = std::make_unique<QeDbDatabase>(static_cast<QeDb::QeDbDwgVersion>(header.version));
        made->imp().clear();
        made->imp().store = std::move(store);
        fillRoots(made->imp(), header);
        if (isShared)
            opened.rollBack();
        database = std::move(made);
        return {};
    } catch (const QeHost::StoreFailure& failure) {
        return failure.result;
    }
}

} // namespace

FileResult attachDrawing(std::unique_ptr<DrawingConnection> connection, const fs::path& file, bool isShared,
                         std::unique_ptr<QeDbDatabase>& database)
{
    return attach(std::move(connection), file, displayName(file), isShared, database);
}

std::string sqliteName(const fs::path& file)
{
    // SQLite takes ":memory:" and what begins with "file:" for something else.
    const auto utf8 = systemPath(file.is_relative() ? fs::path(".") / file : file).u8string();
    return {utf8.begin(), utf8.end()};
}

FileResult requireOneName(const fs::path& file)
{
    std::error_code error;
    const std::uintmax_t names = fs::hard_link_count(file, error);
    if (error || names <= 1)
        return {};
    return {Qeapp::eFileWriteFailed, "has " + std::to_string(names) +
                                         " names (hard links), and is not changed under any of them; copy it to a file "
                                         "of its own"};
}

FileResult inspectFile(const fs::path& file)
{
    Expected<FileKind> kind = fileKind(file);
    if (!kind)
        return {Qeapp::eFileNotFound, std::move(kind.error().message)};
    switch (*kind) {
    case FileKind::regular:
        return {};
    case FileKind::folder:
        return {Qeapp::eFileDamaged, "is a folder"};
    case FileKind::other:
        break;
    }
    return {Qeapp::eFileDamaged, "is not a regular file"};
}

FileResult connect(const fs::path& file, DrawingAccess access, const LockWait& wait,
                   std::unique_ptr<DrawingConnection>& connection)
{
    const std::string name = displayName(file);
    FileResult result = inspectFile(file);
    if (result.status == Qeapp::eOk && access == DrawingAccess::changing)
        result = requireOneName(file);
    if (result.status != Qeapp::eOk)
        return {result.status, name + ": " + result.message};
    // Also for reading: a journal that a killed process has left is rolled back first.
    const auto connected = catchSqlError(
        [&] { connection = std::make_unique<DrawingConnection>(sqliteName(file), SQLite::OPEN_READWRITE, wait); });
    if (!connected)
        return {Qeapp::eFileNotFound, name + ": cannot be opened: " + std::generic_category().message(errno)};
    return drawingResult(*connection, name, [&] { begin(*connection, access); });
}

FileResult openDrawing(const fs::path& file, DrawingAccess access, const LockWait& wait,
                       std::unique_ptr<QeDbDatabase>& database)
{
    std::unique_ptr<DrawingConnection> connection;
    if (FileResult result = connect(file, access, wait, connection); result.status != Qeapp::eOk)
        return result;
    return attachDrawing(std::move(connection), file, access == DrawingAccess::sharing, database);
}

FileResult openDrawingFromBytes(const std::string& bytes, std::unique_ptr<QeDbDatabase>& database)
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
    FileResult result = drawingResult(*connection, name, [&] { begin(*connection, DrawingAccess::reading); });
    return result.status == Qeapp::eOk ? attach(std::move(connection), {}, name, true, database) : result;
}

} // namespace Embedded
