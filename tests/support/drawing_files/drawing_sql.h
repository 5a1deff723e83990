// Opens drawing files as SQLite databases. This is a second implementation of checksums and seals, written from
// docs/formats/drawing-file.md. With it a test makes files that are wrong but have matching checksums.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include <SQLiteCpp/SQLiteCpp.h>

namespace Tests {

class DrawingSql {
public:
    /// Opens a file, or makes an empty one. Throws the exceptions of SQLiteCpp.
    explicit DrawingSql(const std::filesystem::path& file);

    void run(const std::string& sql);
    /// The first value of a query's result, as text.
    std::string text(const std::string& query);
    std::int64_t integer(const std::string& query);
    /// Computes every checksum and digest of the tables from the rows.
    void computeChecksums();

private:
    SQLite::Database database_;
};

/// Changes a drawing file by SQL, and computes its checksums and seals again.
void changeBySql(const std::filesystem::path& file, const std::string& sql);
/// Computes the seals of the pages.
void sealFile(const std::filesystem::path& file);

/// Creates a drawing file from statements.
void createFromSql(const std::filesystem::path& file, const std::string& sql);
/// Writes the statements that create the drawing file.
std::string dumpAsSql(const std::filesystem::path& file);
std::string dumpAsSql(SQLite::Database& database);

} // namespace Tests
