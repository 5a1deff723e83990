#include "embedded/host/drawing_file/drawing_connection.h"

#include <array>
#include <utility>

#include "embedded/base/text.h"
#include "embedded/host/database/handle.h"
#include "embedded/host/database/host_error.h"
#include "embedded/host/drawing_file/sealed_pages.h"

namespace Embedded {
namespace {

constexpr std::size_t kMostBytesOfValue = 900'000'000; // of the 1,000,000,000 that a row may have

std::string_view bytesOf(const SQLite::Column& column)
{
    const void* const bytes = column.getBlob();
    return {static_cast<const char*>(bytes), bytes != nullptr ? static_cast<std::size_t>(column.getBytes()) : 0};
}

StoredValue toStoredValue(const SQLite::Column& column)
{
    if (column.isInteger())
        return column.getInt64();
    if (column.isFloat())
        return column.getDouble();
    if (column.isNull())
        return {};
    return StoredText{std::string(bytesOf(column)), column.isBlob()};
}

/// How a message names a row by its first value.
std::string shown(const StoredValue& value)
{
    if (const auto* handle = std::get_if<std::int64_t>(&value))
        return formatHandle(static_cast<std::uint64_t>(*handle));
    const auto* text = std::get_if<StoredText>(&value);
    return text != nullptr ? truncateForMessage(text->bytes) : "nothing";
}

class ValueSummer {
public:
    explicit ValueSummer(RowChecksum& sum) : sum_(sum) {}
    void operator()(std::monostate /*null*/) { sum_.addNull(); }
    void operator()(std::int64_t number) { sum_.add(number); }
    void operator()(double number) { sum_.add(number); }
    void operator()(const StoredText& text) { sum_.add(text.bytes, text.isBlob); }

private:
    RowChecksum& sum_;
};

} // namespace

std::int64_t checksumOf(std::string_view table, const StoredRow& row)
{
    RowChecksum sum(table);
    for (const StoredValue& value : row)
        std::visit(ValueSummer(sum), value);
    return sum.value();
}

DrawingConnection::DrawingConnection(const std::string& file, int flags, LockWait wait)
    : wait_(std::move(wait)), database_(file, flags, 0, file == ":memory:" ? "" : sealingVfs())
{
    makeDefensive(handle());
    setWait(handle(), wait_);
    // What was reported as saved outlasts a loss of power: the journal's removal is flushed, too.
    sqlite3_exec(handle(), "PRAGMA synchronous = EXTRA", nullptr, nullptr, nullptr);
}

std::int64_t DrawingConnection::fileSize() const
{
    sqlite3_file* file = nullptr;
    sqlite3_int64 size = 0;
    sqlite3_file_control(handle(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
    if (file != nullptr && file->pMethods != nullptr)
        file->pMethods->xFileSize(file, &size);
    return size;
}

void DrawingConnection::rollBack() noexcept
{
    if (isInTransaction())
        sqlite3_exec(handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

SQLite::Statement& DrawingConnection::prepared(const char* sql)
{
    const auto found = statements_.find(sql);
    if (found == statements_.end())
        return statements_.try_emplace(sql, database_, sql).first->second;
    return found->second;
}

std::string beginningOfFile(sqlite3* connection)
{
    sqlite3_file* file = nullptr;
    std::array<char, 64> bytes{};
    if (sqlite3_file_control(connection, "main", SQLITE_FCNTL_FILE_POINTER, &file) != SQLITE_OK ||
        file->pMethods == nullptr)
        return {};
    const int read = file->pMethods->xRead(file, bytes.data(), static_cast<int>(bytes.size()), 0);
    const bool hasSome = read == SQLITE_OK || read == SQLITE_IOERR_SHORT_READ;
    return hasSome ? std::string(bytes.data(), bytes.size()) : std::string();
}

void copyDatabase(DrawingConnection& from, DrawingConnection& to)
{
    SQLite::Backup backup(to.database(), from.database());
    if (const int result = backup.executeStep(-1); result != SQLITE_DONE)
        throw SQLite::Exception("the other database is in use", result);
}

Query::~Query()
{
    statement_.tryReset();
}

void Query::bind(int index, const StoredText& text)
{
    if (text.bytes.size() > kMostBytesOfValue)
        throwError(Qeapp::eInvalidInput,
                   "a value of " + std::to_string(text.bytes.size()) + " bytes is longer than a drawing file can keep");
    const auto length = static_cast<int>(text.bytes.size());
    if (text.isBlob)
        statement_.bind(index, static_cast<const void*>(text.bytes.data()), length);
    else
        statement_.bind(index, text.bytes);
}

void Query::bind(int index, const StoredValue& value)
{
    if (const auto* integer = std::get_if<std::int64_t>(&value))
        bind(index, *integer);
    else if (const auto* real = std::get_if<double>(&value))
        statement_.bind(index, *real);
    else if (const auto* text = std::get_if<StoredText>(&value))
        bind(index, *text);
    else
        statement_.bind(index);
}

StoredValue Query::value(int column) const
{
    return toStoredValue(statement_.getColumn(column));
}

StoredRow Query::row(std::string_view table, RowDigest& digest) const
{
    StoredRow row;
    const int last = statement_.getColumnCount() - 1;
    for (int column = 0; column < last; ++column)
        row.push_back(value(column));
    const std::int64_t checksum = checksumOf(table, row);
    if (checksum != integer(last))
        throwDamage("the row of " + shown(row.front()) + " is not as it was written", "table " + std::string(table));
    digest.add(checksum);
    return row;
}

} // namespace Embedded
