#include "embedded/host/drawing_file/drawing_destination.h"

#include <cerrno>
#include <fstream>
#include <system_error>
#include <utility>

#include "embedded/base/file_kind.h"
#include "embedded/base/path.h"
#include "embedded/base/staged_file.h"
#include "embedded/host/drawing_file/drawing_error.h"
#include "embedded/host/drawing_file/drawing_opening.h"
#include "embedded/host/drawing_file/drawing_schema.h"
#include "embedded/host/drawing_file/drawing_writer.h"
#include "embedded/host/drawing_file/sealed_pages.h"

namespace Embedded {
namespace {

namespace fs = std::filesystem;

using QeHost::DatabaseImp;
using QeHost::SavePlan;

/// Runs `work` as catchDrawingError does, and rolls back what it has written when it fails.
template <class Work>
Expected<void> saveOrRollBack(DrawingConnection& connection, const std::string& name, Work work)
{
    try {
        Expected<void> result = catchDrawingError(connection, name, work);
        if (!result)
            connection.rollBack();
        return result;
    } catch (const std::bad_alloc&) {
        connection.rollBack();
        throw;
    }
}

class OwnFile final : public DrawingDestination {
public:
    explicit OwnFile(DrawingStore& store) : store_(store) {}

    std::string name() const override { return store_.file(); }

    Expected<void> write(DatabaseImp& database, QeDb::QeDbDwgVersion version) override
    {
        return saveOrRollBack(store_.connection(), name(), [&]() -> Expected<void> {
            store_.beginSaving();
            const Expected<SavePlan> plan = QeHost::planSave(database);
            if (!plan)
                return failure(plan.error());
            writeDrawing(store_.connection(), database, *plan, version);
            store_.commit();
            markSaved(database, *plan);
            return {};
        });
    }

private:
    DrawingStore& store_;
};

/// Fills an empty database with the whole drawing.
Expected<void> writeWhole(DrawingConnection& connection, DrawingStore* store, DatabaseImp& database,
                          QeDb::QeDbDwgVersion version)
{
    const Expected<SavePlan> plan = QeHost::planSave(database);
    if (!plan)
        return failure(plan.error());
    if (store != nullptr) {
        if (Expected<void> copied = store->copyTo(connection); !copied)
            return copied;
    }
    connection.database().exec("BEGIN IMMEDIATE");
    if (store == nullptr)
        DrawingSchema::create(connection.database());
    writeDrawing(connection, database, *plan, version);
    connection.database().exec("COMMIT");
    return {};
}

std::unique_ptr<DrawingConnection> emptyInMemory()
{
    auto connection = std::make_unique<DrawingConnection>(":memory:", SQLite::OPEN_READWRITE, LockWait());
    leaveRoomForSeals(connection->handle());
    return connection;
}

class Memory final : public DrawingDestination {
public:
    Memory(DrawingStore* store, std::string& bytes) : store_(store), bytes_(bytes) {}

    std::string name() const override { return "standard output"; }

    Expected<void> write(DatabaseImp& database, QeDb::QeDbDwgVersion version) override
    {
        const std::unique_ptr<DrawingConnection> connection = emptyInMemory();
        return saveOrRollBack(*connection, name(), [&]() -> Expected<void> {
            if (Expected<void> filled = writeWhole(*connection, store_, database, version); !filled)
                return filled;
            sqlite3_int64 size = 0;
            unsigned char* const serialized = sqlite3_serialize(connection->handle(), "main", &size, 0);
            if (serialized == nullptr)
                throw std::bad_alloc();
            const std::unique_ptr<unsigned char, decltype(&sqlite3_free)> owned(serialized, sqlite3_free);
            bytes_.assign(reinterpret_cast<const char*>(serialized), static_cast<std::size_t>(size));
            sealPages(bytes_);
            return {};
        });
    }

private:
    DrawingStore* store_;
    std::string& bytes_;
};

/// Another file than the drawing's own.
class OtherFile final : public DrawingDestination {
public:
    OtherFile(DrawingStore* store, fs::path file, Overwriting overwriting, LockWait wait)
        : store_(store), file_(std::move(file)), overwriting_(overwriting), wait_(std::move(wait))
    {
    }

    std::string name() const override { return displayName(file_); }

    Expected<void> write(DatabaseImp& database, QeDb::QeDbDwgVersion version) override
    {
        const Expected<void> isRegular = requireRegularFile(file_);
        if (!isRegular && hostStatus(isRegular) != Qeapp::eFileNotFound)
            return failure(Qeapp::eFileWriteFailed, isRegular.error().message, name());
        const Existing existing = isRegular ? inspectExisting() : Existing::nothing;
        if (existing == Existing::nothing || existing == Existing::noBytes) {
            if (store_ == nullptr)
                return writeNew(existing, database, version);
        } else if (Expected<void> result = requireOverwritable(existing); !result) {
            return result;
        }
        return writeStaged(existing, database, version);
    }

private:
    enum class Existing { nothing, noBytes, database, noDatabase };

    Existing inspectExisting() const
    {
        std::unique_ptr<DrawingConnection> connection;
        const auto isReadable = catchSqlError([&] {
            connection = open(file_, SQLite::OPEN_READWRITE);
            connection->database().exec("PRAGMA user_version"); // rolls back what a killed save has left
        });
        if (connection != nullptr && connection->fileSize() == 0) // so is a new drawing that was not finished
            return Existing::noBytes;
        return isReadable || connection == nullptr || isDatabase(connection->handle()) ? Existing::database
                                                                                       : Existing::noDatabase;
    }

    Expected<void> requireOverwritable(Existing existing) const
    {
        if (overwriting_ == Overwriting::refused)
            return exists();
        if (existing == Existing::noDatabase && overwriting_ == Overwriting::noDatabase)
            return {};
        const Expected<std::unique_ptr<DrawingConnection>> connection = connect(file_, DrawingAccess::changing, wait_);
        if (connection)
            return {};
        Error error = connection.error();
        if (error.status == Qeapp::eFileDamaged || error.status == Qeapp::eFileTooNew)
            error.message += "; only drawings are overwritten";
        return failure(std::move(error));
    }

    tl::unexpected<Error> exists() const { return failure(Qeapp::eFileExists, "the file exists already", name()); }

    tl::unexpected<Error> cannotBeWritten(const std::string& reason) const
    {
        return failure(Qeapp::eFileWriteFailed, "cannot be written: " + reason, name());
    }

    std::unique_ptr<DrawingConnection> open(const fs::path& file, int flags) const
    {
        return std::make_unique<DrawingConnection>(sqliteName(file), flags, wait_);
    }

    /// The system's reason for the name says more than its reason for the call, where the name is one that no file has.
    std::string creationError(int error) const
    {
        const Expected<FileKind> kind = fileKind(file_);
        return error == EINVAL && !kind ? kind.error().message : std::generic_category().message(error);
    }

    /// Of those who make the same file at once, the first to lock it makes it. A failure leaves a file of no bytes:
    /// whoever waits for the lock may be about to fill it.
    Expected<void> writeNew(Existing existing, DatabaseImp& database, QeDb::QeDbDwgVersion version)
    {
        // SQLite would make it too, and not say why it cannot.
        errno = 0;
        if (existing == Existing::nothing && !std::ofstream(systemPath(file_), std::ios::app))
            return cannotBeWritten(creationError(errno));
        std::unique_ptr<DrawingConnection> connection;
        if (!catchSqlError([&] { connection = open(file_, SQLite::OPEN_READWRITE); }))
            return cannotBeWritten(std::generic_category().message(errno));
        return saveOrRollBack(*connection, name(), [&]() -> Expected<void> {
            leaveRoomForSeals(connection->handle());
            connection->database().exec("BEGIN IMMEDIATE");
            if (connection->fileSize() != 0)
                return exists();
            const Expected<SavePlan> plan = QeHost::planSave(database);
            if (!plan)
                return failure(plan.error());
            DrawingSchema::create(connection->database());
            writeDrawing(*connection, database, *plan, version);
            connection->database().exec("COMMIT");
            return {};
        });
    }

    /// Into a file of its own beside the target first, so that the target is never half written.
    Expected<void> writeStaged(Existing existing, DatabaseImp& database, QeDb::QeDbDwgVersion version)
    {
        Expected<StagedFile> staged = StagedFile::create(file_);
        if (!staged)
            return failure(Qeapp::eFileWriteFailed, staged.error().message, staged.error().place);
        std::unique_ptr<DrawingConnection> connection = open(staged->temporaryName(), SQLite::OPEN_READWRITE);
        Expected<void> result = saveOrRollBack(*connection, name(), [&]() -> Expected<void> {
            connection->database().exec("PRAGMA journal_mode = MEMORY; PRAGMA synchronous = OFF");
            leaveRoomForSeals(connection->handle());
            Expected<void> filled = writeWhole(*connection, store_, database, version);
            if (filled && (existing == Existing::noBytes || existing == Existing::database))
                copyDatabase(*connection, *open(file_, SQLite::OPEN_READWRITE));
            return filled;
        });
        connection.reset();
        return result ? finish(existing, *staged) : result;
    }

    /// Gives the complete file the target's name, unless its content was copied into the target.
    Expected<void> finish(Existing existing, StagedFile& staged) const
    {
        if (existing != Existing::noDatabase && existing != Existing::nothing)
            return {};
        const Expected<bool> published =
            existing == Existing::nothing ? staged.publish() : staged.replaceTarget().map([] { return true; });
        if (!published)
            return failure(Qeapp::eFileWriteFailed, published.error().message, published.error().place);
        if (!*published)
            return exists();
        return {};
    }

    DrawingStore* store_;
    fs::path file_;
    Overwriting overwriting_;
    LockWait wait_;
};

} // namespace

std::unique_ptr<DrawingDestination> destinationFor(DrawingStore* store, const fs::path& file, Overwriting overwriting,
                                                   const LockWait& wait)
{
    std::error_code error;
    if (store != nullptr && fs::equivalent(store->path(), file, error) && !error)
        return std::make_unique<OwnFile>(*store);
    return std::make_unique<OtherFile>(store, file, overwriting, wait);
}

std::unique_ptr<DrawingDestination> destinationInMemory(DrawingStore* store, std::string& bytes)
{
    return std::make_unique<Memory>(store, bytes);
}

} // namespace Embedded
