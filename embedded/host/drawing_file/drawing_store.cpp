#include "embedded/host/drawing_file/drawing_store.h"

#include <algorithm>
#include <utility>

#include "embedded/base/text.h"
#include "embedded/host/database/handle.h"
#include "embedded/host/drawing_file/drawing_error.h"
#include "embedded/host/drawing_file/drawing_opening.h"
#include "embedded/host/drawing_file/object_rows.h"

namespace Embedded {
namespace {

/// Of the file, which each commit increments by one. To be asked for in a transaction that has read something.
/// (SQLite's own answer, data_version, also moves when a save of this connection fails.)
std::uint32_t changeCounter(const DrawingConnection& connection)
{
    constexpr std::size_t kOffset = 24; // of its header, the high byte first
    const std::string beginning = beginningOfFile(connection.handle());
    std::uint32_t counter = 0;
    for (std::size_t byte = kOffset; byte < kOffset + sizeof counter && byte < beginning.size(); ++byte)
        counter = counter << 8 | static_cast<unsigned char>(beginning[byte]);
    return counter;
}

/// A read transaction for as long as it lives, unless there is a transaction already.
class ReadTransaction {
public:
    explicit ReadTransaction(DrawingConnection& connection)
        : connection_(connection), isOwn_(!connection.isInTransaction())
    {
        if (isOwn_)
            connection_.database().exec("BEGIN; PRAGMA user_version"); // it begins with the first reading
    }
    ReadTransaction(const ReadTransaction&) = delete;
    ReadTransaction& operator=(const ReadTransaction&) = delete;
    ~ReadTransaction()
    {
        if (isOwn_)
            connection_.rollBack();
    }

private:
    DrawingConnection& connection_;
    bool isOwn_;
};

void requireDistinct(const std::vector<std::pair<std::wstring, Handle>>& entries)
{
    std::vector<Handle> objects;
    for (const auto& [key, object] : entries)
        objects.push_back(object);
    std::sort(objects.begin(), objects.end());
    if (const auto twice = std::adjacent_find(objects.begin(), objects.end()); twice != objects.end())
        Embedded::throwDamage("is listed twice", objectPlace(*twice));
}

} // namespace

DrawingStore::DrawingStore(std::unique_ptr<DrawingConnection> connection, std::filesystem::path path, std::string file)
    : connection_(std::move(connection)),
      path_(std::move(path)),
      file_(std::move(file)),
      version_(changeCounter(*connection_))
{
}

template <class Read>
auto DrawingStore::inReadTransaction(Read read)
{
    if (!result_)
        throw ErrorException(result_.error());
    decltype(read()) answer{};
    const Expected<void> result = catchDrawingError(*connection_, file_, [&] {
        const ReadTransaction transaction(*connection_);
        requireUnchanged();
        answer = read();
    });
    if (result)
        return answer;
    if (hostStatus(result) != Qeapp::eFileLocked)
        result_ = result;
    throw ErrorException(result.error());
}

void DrawingStore::requireUnchanged()
{
    if (changeCounter(*connection_) != version_)
        throwError(Qeapp::eFileChanged, "was changed by another program since it was opened; open it again");
}

DrawingHeader DrawingStore::header()
{
    return inReadTransaction([&] { return readHeader(*connection_); });
}

QeHost::StoredObject DrawingStore::lookUp(Handle object)
{
    return inReadTransaction([&] {
        const ObjectRow row = readObjectRow(*connection_, object);
        return QeHost::StoredObject{wideFromUtf8(row.className), row.owner};
    });
}

void DrawingStore::load(QeHost::ObjectRecord& object, QeHost::ObjectState& state)
{
    inReadTransaction([&] {
        readFields(*connection_, object, state);
        return true;
    });
}

Handle DrawingStore::findEntry(Handle dictionary, const std::wstring& key)
{
    return inReadTransaction([&] {
        Query query(*connection_, "SELECT * FROM entries WHERE dictionary = ? AND key = ?", dictionary,
                    storedFromWide(key));
        RowDigest digest;
        return query.next() ? requireHandle(query.row("entries", digest)[2]) : Handle{0};
    });
}

std::vector<std::pair<std::wstring, Handle>> DrawingStore::readEntries(Handle dictionary)
{
    return inReadTransaction([&] {
        const ObjectRow owner = readObjectRow(*connection_, dictionary);
        std::vector<std::pair<std::wstring, Handle>> entries;
        RowDigest digest;
        Query query(*connection_, "SELECT * FROM entries WHERE dictionary = ?", dictionary);
        while (query.next()) {
            const StoredRow row = query.row("entries", digest);
            if (digest.rows > owner.owned.rows) // a damaged tree may give some again and again
                break;
            entries.emplace_back(requireKey(row[1]), requireHandle(row[2]));
        }
        requireDistinct(entries);
        if (digest != owner.owned)
            Embedded::throwDamage("not all of its entries are there", objectPlace(dictionary));
        return entries;
    });
}

std::pair<Handle, std::wstring> DrawingStore::findOwningEntry(Handle object)
{
    return inReadTransaction([&] {
        Query query(*connection_, "SELECT * FROM entries WHERE object = ?", object);
        RowDigest digest;
        if (!query.next())
            return std::pair<Handle, std::wstring>();
        const StoredRow row = query.row("entries", digest);
        return std::pair(requireHandle(row[0]), requireKey(row[1]));
    });
}

std::vector<Handle> DrawingStore::findApplicationUsers(Handle application)
{
    return inReadTransaction([&] {
        std::vector<Handle> users;
        Query query(*connection_, "SELECT DISTINCT object FROM extended_data WHERE application = ?", application);
        while (query.next())
            users.push_back(static_cast<Handle>(query.integer(0)));
        return users;
    });
}

void DrawingStore::throwDamage(Handle object, const std::string& message)
{
    const Error error = inFile(file_, {Qeapp::eFileDamaged, message, objectPlace(object)});
    result_ = failure(error);
    throw ErrorException(error);
}

Expected<void> DrawingStore::copyTo(DrawingConnection& other)
{
    const ReadTransaction transaction(*connection_);
    if (Expected<bool> unchanged = catchError([&] { return inReadTransaction([] { return true; }); }); !unchanged)
        return failure(std::move(unchanged).error());
    if (sqlite3_txn_state(connection_->handle(), "main") == SQLITE_TXN_WRITE) {
        // SQLite does not copy from a connection that holds the lock for writing. It has not written anything yet.
        DrawingConnection reader(sqliteName(path_), SQLite::OPEN_READONLY, LockWait());
        copyDatabase(reader, other);
    } else {
        copyDatabase(*connection_, other);
    }
    return {};
}

void DrawingStore::beginSaving()
{
    if (sqlite3_txn_state(connection_->handle(), "main") == SQLITE_TXN_WRITE)
        return;
    if (Expected<void> result = requireOneName(path_); !result)
        throw ErrorException(std::move(result).error());
    connection_->rollBack(); // what was only read
    connection_->database().exec("BEGIN IMMEDIATE");
    requireUnchanged();
}

void DrawingStore::commit()
{
    connection_->database().exec("COMMIT");
    ++version_;
}

} // namespace Embedded
