// Computes the checksums and digests of a drawing's tables from the rows: a second implementation, written from
// docs/formats/drawing-file.md.
#pragma once

#include <deque>

#include <SQLiteCpp/SQLiteCpp.h>

namespace Tests {

/// Adds to the connection the functions row_checksum(table, value, …) and wrapping_sum(checksum).
void addChecksumFunctions(SQLite::Database& database);

/// Each of the three steps needs the ones before it. The statements are prepared once, for a connection that has the
/// functions and the tables.
class RowChecksums {
public:
    explicit RowChecksums(SQLite::Database& database);

    /// Computes the checksums of all rows except those of objects.
    void computeForDetails();
    /// Computes the counts and digests that objects keep of their rows.
    void computeCounts();
    /// Computes the checksums of objects.
    void computeForObjects();

private:
    std::deque<SQLite::Statement> details_;
    SQLite::Statement counts_;
    SQLite::Statement objects_;
};

} // namespace Tests
