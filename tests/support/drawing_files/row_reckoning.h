// Makes the checksums and digests of a drawing's tables fit the rows. They are reckoned here a second time, from the
// words of docs/formats/drawing-file.md.
#pragma once

#include <deque>

#include <SQLiteCpp/SQLiteCpp.h>

namespace Tests {

/// Gives the connection the functions row_checksum(table, value, …) and wrapping_sum(checksum).
void addChecksumFunctions(SQLite::Database& database);

/// Each of the three steps relies on those before it. The statements are prepared once; the connection has the
/// functions and the tables.
class RowReckoning {
public:
    explicit RowReckoning(SQLite::Database& database);

    /// The checksums of all rows but those of objects.
    void reckonDetails();
    /// What objects say of the rows that belong to them.
    void reckonCounts();
    /// The checksums of objects.
    void reckonObjects();

private:
    std::deque<SQLite::Statement> details_;
    SQLite::Statement counts_;
    SQLite::Statement objects_;
};

} // namespace Tests
