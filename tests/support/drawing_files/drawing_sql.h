// Drawing files as the databases that they are. The checksums and seals are reckoned here a second time, from the words
// of docs/formats/drawing-file.md, so that a test can make files that are well-formed and wrong.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include <SQLiteCpp/SQLiteCpp.h>

namespace Tests {

class DrawingSql {
public:
    /// An existing file, or a new and empty one. What it throws is SQLite's.
    explicit DrawingSql(const std::filesystem::path& file);

    void run(const std::string& sql);
    /// The first value that a query gives, as a text.
    std::string text(const std::string& query);
    std::int64_t integer(const std::string& query);
    /// Makes every checksum and digest of the tables fit the rows.
    void reckon();

private:
    SQLite::Database database_;
};

/// Changes a drawing file by SQL, and makes its checksums and seals fit again.
void changeBySql(const std::filesystem::path& file, const std::string& sql);
/// Makes the seals of the pages fit the pages.
void sealFile(const std::filesystem::path& file);

/// Makes a drawing file from statements, and the statements from a drawing file.
void makeFromSql(const std::filesystem::path& file, const std::string& sql);
std::string sqlOf(const std::filesystem::path& file);
std::string sqlOf(SQLite::Database& database);

} // namespace Tests
