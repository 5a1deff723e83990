#include "embedded/host/drawing_file/drawing_destination.h"

#include <cerrno>
#include <fstream>
#include <system_error>
#include <utility>

#include "embedded/base/file_kind.h"
#include "embedded/base/path.h"
#include "embedded/base/staged_file.h"
#include "embedded/host/drawing_file/drawing_failure.h"
#include "embedded/host/drawing_file/drawing_opening.h"
#include "embedded/host/drawing_file/drawing_writer.h"
#include "embedded/host/drawing_file/schema.h"
#include "embedded/host/drawing_file/sealed_pages.h"

namespace Embedded {
namespace {

namespace fs = std::filesystem;

using QeHost::DatabaseImp;
using QeHost::SavePlan;

/// Runs `work` and answers how it went, whatever part of the drawing or of a file it stopped at.
template <class Work>
FileResult saving(DrawingConnection& connection, const std::string& name, Work work)
{
    try {
        FileResult result = drawingResult(connection, name, work);
        if (result.status != Qeapp::eOk)
            connection.rollBack();
        return result;
    } catch (const QeHost::StoreFailure& failure) {
        connection.rollBack();
        return failure.result;
    } catch (const std::bad_alloc&) {
        connection.rollBack();
        throw;
    }
}

class OwnFile final : public DrawingDestination {
public:
    explicit OwnFile(DrawingStore& store) : store_(store) {}

    std::string name() const override { return store_.file(); }

    FileResult write(DatabaseImp& database, QeDb::QeDbDwgVersion version) override
    {
        return saving(store_.connection(), name(), [&] {
            store_.beginSaving();
            const SavePlan plan = QeHost::planSave(database);
            writeDrawing(store_.connection(), database, plan, version);
            store_.commit();
            noteSaved(database, plan);
        });
    }

private:
    DrawingStore& store_;
};

/// Fills an empty database with the whole drawing.
void fill(DrawingConnection& connection, DrawingStore* store, DatabaseImp& database, QeDb::QeDbDwgVersion version)
{
    const SavePlan plan = QeHost::planSave(database);
    if (store != nullptr)
        store->copyTo(connection);
    connection.database().exec("BEGIN IMMEDIATE");
    if (store == nullptr)
        DrawingSchema::create(connection.database());
    writeDrawing(connection, database, plan, version);
    connection.database().exec("COMMIT");
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

    FileResult write(DatabaseImp& database, QeDb::QeDbDwgVersion version) override
    {
        const std::unique_ptr<DrawingConnection> connection = emptyInMemory();
        return saving(*connection, name(), [&] {
            fill(*connection, store_, database, version);
            sqlite3_int64 size = 0;
            unsigned char* const serialized = sqlite3_serialize(connection->handle(), "main", &size, 0);
            if (serialized == nullptr)
                throw std::bad_alloc();
            const std::unique_ptr<unsigned char, decltype(&sqlite3_free)> owned(serialized, sqlite3_free);
            bytes_.assign(reinterpret_cast<const char*>(serialized), static_cast<std::size_t>(size));
            sealPages(bytes_);
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

    FileResult write(DatabaseImp& database, QeDb::QeDbDwgVersion version) override
    {
        const FileResult found = inspectFile(file_);
        if (found.status != Qeapp::eOk && found.status != Qeapp::eFileNotFound)
            return {Qeapp::eFileWriteFailed, name() + ": " + found.message};
        const What there = found.status == Qeapp::eOk ? whatIsThere() : What::nothing;
        if (there == What::nothing || there == What::noBytes) {
            if (store_ == nullptr)
                return writeNew(there, database, version);
        } else if (FileResult refusal = refusalToOverwrite(there); refusal.status != Qeapp::eOk) {
            return refusal;
        }
        return writeStaged(there, database, version);
    }

private:
    enum class What { nothing, noBytes, database, noDatabase };

    What whatIsThere() const
    {
        std::unique_ptr<DrawingConnection> there;
        const auto isReadable = catchSqlError([&] {
            there = open(file_, SQLite::OPEN_READWRITE);
            there->database().exec("PRAGMA user_version"); // rolls back what a killed save has left
        });
        if (there != nullptr && there->fileSize() == 0) // so is a new drawing that was not finished
            return What::noBytes;
        return isReadable || there == nullptr || isDatabase(there->handle()) ? What::database : What::noDatabase;
    }

    FileResult refusalToOverwrite(What there) const
    {
        if (overwriting_ == Overwriting::refused)
            return {Qeapp::eFileExists, name() + ": there is such a file already"};
        if (there == What::noDatabase && overwriting_ == Overwriting::noDatabase)
            return {};
        std::unique_ptr<DrawingConnection> connection;
        FileResult result = connect(file_, DrawingAccess::changing, wait_, connection);
        if (result.status == Qeapp::eFileDamaged || result.status == Qeapp::eFileTooNew)
            result.message += "; what is no drawing is not overwritten";
        return result;
    }

    std::unique_ptr<DrawingConnection> open(const fs::path& file, int flags) const
    {
        return std::make_unique<DrawingConnection>(sqliteName(file), flags, wait_);
    }

    /// The system's reason for the name says more than its reason for the call, where the name is one that no file has.
    std::string whyNotMade(int error) const
    {
        const Expected<FileKind> kind = fileKind(file_);
        return error == EINVAL && !kind ? kind.error().message : std::generic_category().message(error);
    }

    /// Of those who make the same file at once, the first to lock it makes it. A failure leaves a file of no bytes:
    /// whoever waits for the lock may be about to fill it.
    FileResult writeNew(What there, DatabaseImp& database, QeDb::QeDbDwgVersion version)
    {
        // SQLite would make it too, and not say why it cannot.
        errno = 0;
        if (there == What::nothing && !std::ofstream(systemPath(file_), std::ios::app))
            return {Qeapp::eFileWriteFailed, name() + ": cannot be written: " + whyNotMade(errno)};
        std::unique_ptr<DrawingConnection> connection;
        if (!catchSqlError([&] { connection = open(file_, SQLite::OPEN_READWRITE); }))
            return {Qeapp::eFileWriteFailed, name() + ": cannot be written: " + std::generic_category().message(errno)};
        return saving(*connection, name(), [&] {
            leaveRoomForSeals(connection->handle());
            connection->database().exec("BEGIN IMMEDIATE");
            if (connection->fileSize() != 0)
                throw DrawingRefusal{Qeapp::eFileExists, "there is such a file already"};
            const SavePlan plan = QeHost::planSave(database);
            DrawingSchema::create(connection->database());
            writeDrawing(*connection, database, plan, version);
            connection->database().exec("COMMIT");
        });
    }

    /// Into a file of its own beside the target first, so that the target is never half written.
    FileResult writeStaged(What there, DatabaseImp& database, QeDb::QeDbDwgVersion version)
    {
        Expected<StagedFile> staged = StagedFile::create(file_);
        if (!staged)
            return {Qeapp::eFileWriteFailed, staged.error().text()};
        std::unique_ptr<DrawingConnection> connection = open(staged->temporaryName(), SQLite::OPEN_READWRITE);
        FileResult result = saving(*connection, name(), [&] {
            connection->database().exec("PRAGMA journal_mode = MEMORY; PRAGMA synchronous = OFF");
            leaveRoomForSeals(connection->handle());
            fill(*connection, store_, database, version);
            if (there == What::noBytes || there == What::database)
                copyDatabase(*connection, *open(file_, SQLite::OPEN_READWRITE));
        });
        connection.reset();
        return result.status == Qeapp::eOk ? finish(there, *staged) : result;
    }

    /// Gives the complete file the target's name, where its content was not copied into the target.
    FileResult finish(What there, StagedFile& staged) const
    {
        if (there != What::noDatabase && there != What::nothing)
            return {};
        const Expected<bool> published =
            there == What::nothing ? staged.publish() : staged.replaceTarget().map([] { return true; });
        if (!published)
            return {Qeapp::eFileWriteFailed, published.error().text()};
        if (!*published)
            return {Qeapp::eFileExists, name() + ": there is such a file already"};
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
