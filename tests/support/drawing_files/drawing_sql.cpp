#include "support/drawing_files/drawing_sql.h"

#include <array>

#include <sqlite3.h>

#define XXH_INLINE_ALL
#include <xxhash.h>

#include "support/drawing_files/row_checksums.h"
#include "support/file_text.h"

namespace Tests {
namespace {

constexpr int kSealLength = 8;
constexpr std::size_t kPageSize = 4096;

/// The value as an SQL literal. `quote` cannot write infinity.
std::string literal(SQLite::Database& database, const SQLite::Column& column)
{
    if (column.isFloat()) {
        const double real = column.getDouble();
        if (real - real != 0)
            return real > 0 ? "9e999" : "-9e999";
    }
    // SQLite has no address for an empty blob, and would bind a missing address as null.
    if (column.isBlob() && column.getBytes() == 0)
        return "X''";
    SQLite::Statement quote(database, "SELECT quote(?)");
    if (column.isBlob())
        quote.bind(1, column.getBlob(), column.getBytes());
    else if (column.isText())
        quote.bind(1, std::string(column.getText(), static_cast<std::size_t>(column.getBytes())));
    else if (column.isInteger())
        quote.bind(1, column.getInt64());
    else if (column.isFloat())
        quote.bind(1, column.getDouble());
    quote.executeStep();
    return quote.getColumn(0).getString();
}

std::string dumpRows(SQLite::Database& database, const std::string& table, const std::string& order)
{
    std::string text;
    SQLite::Statement rows(database, "SELECT * FROM " + table + " ORDER BY " + order);
    while (rows.executeStep()) {
        text += "INSERT INTO " + table + " VALUES (";
        for (int column = 0; column < rows.getColumnCount(); ++column)
            text += (column > 0 ? ", " : "") + literal(database, rows.getColumn(column));
        text += ");\n";
    }
    return text;
}

std::string utf8Path(const std::filesystem::path& file)
{
    const auto utf8 = file.u8string();
    return {utf8.begin(), utf8.end()};
}

} // namespace

DrawingSql::DrawingSql(const std::filesystem::path& file)
    : database_(utf8Path(file), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE)
{
    database_.exec("PRAGMA synchronous = OFF");
    int length = kSealLength;
    sqlite3_file_control(database_.getHandle(), "main", SQLITE_FCNTL_RESERVE_BYTES, &length);
    addChecksumFunctions(database_);
}

void DrawingSql::run(const std::string& sql)
{
    database_.exec(sql);
}

std::string DrawingSql::text(const std::string& query)
{
    return database_.execAndGet(query).getString();
}

std::int64_t DrawingSql::integer(const std::string& query)
{
    return database_.execAndGet(query).getInt64();
}

void DrawingSql::computeChecksums()
{
    RowChecksums checksums(database_);
    run("BEGIN");
    checksums.computeForDetails();
    checksums.computeCounts();
    checksums.computeForObjects();
    run("COMMIT");
}

void sealFile(const std::filesystem::path& file)
{
    std::string bytes = readFile(file);
    for (std::size_t page = 0; (page + 1) * kPageSize <= bytes.size(); ++page) {
        char* const begin = bytes.data() + page * kPageSize;
        const std::uint64_t seal = XXH3_64bits_withSeed(begin, kPageSize - kSealLength, page + 1);
        for (std::size_t byte = 0; byte < kSealLength; ++byte) // low bytes first
            begin[kPageSize - kSealLength + byte] = static_cast<char>(seal >> 8 * byte);
    }
    writeFile(file, bytes);
}

void changeBySql(const std::filesystem::path& file, const std::string& sql)
{
    {
        DrawingSql drawing(file);
        drawing.run(sql);
        drawing.computeChecksums();
    }
    sealFile(file);
}

void createFromSql(const std::filesystem::path& file, const std::string& sql)
{
    DrawingSql(file).run(sql);
    sealFile(file);
}

std::string dumpAsSql(SQLite::Database& database)
{
    std::string text = "BEGIN;\nPRAGMA application_id = " + database.execAndGet("PRAGMA application_id").getString() +
                       ";\nPRAGMA user_version = " + database.execAndGet("PRAGMA user_version").getString() + ";\n";
    SQLite::Statement schema(database, "SELECT sql FROM sqlite_schema WHERE sql IS NOT NULL ORDER BY rowid");
    while (schema.executeStep())
        text += schema.getColumn(0).getString() + ";\n";
    for (const auto& [table, order] : std::array<std::pair<const char*, const char*>, 7>{{
             {"header", "field"},
             {"objects", "handle"},
             {"entries", "dictionary, key"},
             {"records", "object"},
             {"fields", "object, field"},
             {"resbufs", "object, position"},
             {"extended_data", "object, application, position"},
         }})
        text += dumpRows(database, table, order);
    return text + "COMMIT;\n";
}

std::string dumpAsSql(const std::filesystem::path& file)
{
    SQLite::Database database(utf8Path(file), SQLite::OPEN_READONLY);
    return dumpAsSql(database);
}

} // namespace Tests
