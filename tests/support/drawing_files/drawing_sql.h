// Opens drawing files as SQLite databases. Checksums and seals are computed here a second time, from
// docs/formats/drawing-file.md, so that a test can make files that are well-formed but wrong.
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

/// Makes a drawing file from statements, and the statements from a drawing file.
void createFromSql(const std::filesystem::path& file, const std::string& sql);
std::string dumpAsSql(const std::filesystem::path& file);
std::string dumpAsSql(SQLite::Database& database);

} // namespace Tests
