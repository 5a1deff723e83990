// A connection to a drawing file, which is an SQLite database, with its prepared statements.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/base/sqlite.h"
#include "embedded/host/drawing_file/row_checksum.h"
#include "embedded/host/drawing_file/stored_value.h"

namespace Embedded {

/// The values of a row of one of the drawing's tables, without its checksum.
using StoredRow = std::vector<StoredValue>;

class DrawingConnection {
public:
    /// `file` as UTF-8, or ":memory:". `flags` of sqlite3_open_v2.
    DrawingConnection(const std::string& file, int flags, LockWait wait);
    DrawingConnection(const DrawingConnection&) = delete;
    DrawingConnection& operator=(const DrawingConnection&) = delete;

    SQLite::Database& database() { return database_; }
    sqlite3* handle() const { return database_.getHandle(); }
    bool isInTransaction() const { return sqlite3_get_autocommit(handle()) == 0; }
    /// In bytes. Uses SQLite's own descriptor: closing another would end the locks of this process.
    std::int64_t fileSize() const;
    /// Rolls back the transaction, if there is one.
    void rollBack() noexcept;

    /// Returns a statement without values. Prepares each text once.
    SQLite::Statement& prepared(const char* sql);

private:
    LockWait wait_;
    SQLite::Database database_;
    std::map<std::string_view, SQLite::Statement> statements_; // by their text, which is a literal
};

/// The first bytes of the connection's file, zeros where there are fewer; empty when they cannot be read. They are read
/// through SQLite: closing another descriptor would end the locks that this process holds on the file.
std::string beginningOfFile(sqlite3* connection);

/// Makes the other database equal to this one, in a transaction of its own. Throws what SQLiteCpp throws.
void copyDatabase(DrawingConnection& from, DrawingConnection& to);

/// One run of a statement. The destructor resets the statement, which would keep the file locked otherwise.
class Query {
public:
    template <class... Values>
    Query(DrawingConnection& connection, const char* sql, const Values&... values)
        : statement_(connection.prepared(sql))
    {
        [[maybe_unused]] int index = 0;
        (bindNext(index, values), ...);
    }
    Query(const Query&) = delete;
    Query& operator=(const Query&) = delete;
    ~Query();

    bool next() { return statement_.executeStep(); }
    void run() { statement_.exec(); }
    std::int64_t integer(int column) const { return statement_.getColumn(column).getInt64(); }
    std::string text(int column) const { return statement_.getColumn(column).getString(); }
    StoredValue value(int column) const;
    /// The values of a row of the table without its checksum, which must be the last column. Throws an Error if the
    /// checksum does not match.
    StoredRow row(std::string_view table, RowDigest& digest) const;

private:
    template <class Value>
    void bindNext(int& index, const Value& value)
    {
        bind(++index, value);
    }
    void bindNext(int& index, const StoredRow& row)
    {
        for (const StoredValue& value : row)
            bind(++index, value);
    }
    void bind(int index, std::int64_t value) { statement_.bind(index, value); }
    void bind(int index, std::uint64_t value) { bind(index, static_cast<std::int64_t>(value)); }
    void bind(int index, const StoredText& text);
    void bind(int index, const StoredValue& value);

    SQLite::Statement& statement_;
};

std::int64_t checksumOf(std::string_view table, const StoredRow& row);

} // namespace Embedded
