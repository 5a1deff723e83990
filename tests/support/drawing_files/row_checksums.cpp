#include "support/drawing_files/row_checksums.h"

#include <array>
#include <cstdint>
#include <cstring>

#include <sqlite3.h>

#define XXH_INLINE_ALL
#include <xxhash.h>

namespace Tests {
namespace {

std::array<unsigned char, 8> lowBytesFirst(std::uint64_t number)
{
    std::array<unsigned char, 8> bytes{};
    for (std::size_t byte = 0; byte < bytes.size(); ++byte)
        bytes[byte] = static_cast<unsigned char>(number >> 8 * byte);
    return bytes;
}

/// Continues a chain of hashes. The seed is the hash before and the letter of the kind of value.
std::uint64_t chainHash(std::uint64_t before, char kind, const void* bytes, std::size_t length)
{
    return XXH3_64bits_withSeed(bytes, length, before + static_cast<unsigned char>(kind));
}

std::uint64_t chainHash(std::uint64_t before, sqlite3_value* value)
{
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER: {
        const auto bytes = lowBytesFirst(static_cast<std::uint64_t>(sqlite3_value_int64(value)));
        return chainHash(before, 'i', bytes.data(), bytes.size());
    }
    case SQLITE_FLOAT: {
        const double real = sqlite3_value_double(value);
        std::uint64_t bits = 0;
        std::memcpy(&bits, &real, sizeof bits);
        const auto bytes = lowBytesFirst(bits);
        return chainHash(before, 'r', bytes.data(), bytes.size());
    }
    case SQLITE_TEXT: {
        const void* const text = sqlite3_value_text(value);
        return chainHash(before, 't', text, static_cast<std::size_t>(sqlite3_value_bytes(value)));
    }
    case SQLITE_BLOB: {
        const void* const blob = sqlite3_value_blob(value);
        return chainHash(before, 'b', blob, static_cast<std::size_t>(sqlite3_value_bytes(value)));
    }
    default:
        return chainHash(before, 'n', "", 0);
    }
}

/// row_checksum(table, value, …)
void rowChecksum(sqlite3_context* context, int count, sqlite3_value** values)
{
    std::uint64_t sum = 0;
    for (int index = 0; index < count; ++index)
        sum = chainHash(sum, values[index]);
    sqlite3_result_int64(context, static_cast<std::int64_t>(sum));
}

/// wrapping_sum(checksum): modulo 2 to the 64th.
void addToSum(sqlite3_context* context, int /*count*/, sqlite3_value** values)
{
    auto* const sum = static_cast<std::uint64_t*>(sqlite3_aggregate_context(context, sizeof(std::uint64_t)));
    *sum += static_cast<std::uint64_t>(sqlite3_value_int64(values[0]));
}

void endSum(sqlite3_context* context)
{
    const auto* const sum = static_cast<std::uint64_t*>(sqlite3_aggregate_context(context, sizeof(std::uint64_t)));
    sqlite3_result_int64(context, static_cast<std::int64_t>(*sum));
}

// Skips rows whose checksum fits already, which saves most of the time.
constexpr std::array kDetails = {
    "UPDATE header SET checksum = row_checksum('header', field, value) "
    "WHERE checksum IS NOT row_checksum('header', field, value)",
    "UPDATE entries SET checksum = row_checksum('entries', dictionary, key, object) "
    "WHERE checksum IS NOT row_checksum('entries', dictionary, key, object)",
    "UPDATE records SET checksum = row_checksum('records', object, symbol_table) "
    "WHERE checksum IS NOT row_checksum('records', object, symbol_table)",
    "UPDATE fields SET checksum = row_checksum('fields', object, field, value, target) "
    "WHERE checksum IS NOT row_checksum('fields', object, field, value, target)",
    "UPDATE resbufs SET checksum = row_checksum('resbufs', object, position, code, value) "
    "WHERE checksum IS NOT row_checksum('resbufs', object, position, code, value)",
    "UPDATE extended_data SET checksum = row_checksum('extended_data', object, application, position, code, value) "
    "WHERE checksum IS NOT row_checksum('extended_data', object, application, position, code, value)",
};

constexpr const char* kCounts = R"(UPDATE objects SET (owned, owned_digest, details, details_digest) = (
    SELECT o.n, o.sum, d.n, d.sum FROM
        (SELECT count(*) AS n, wrapping_sum(checksum) AS sum FROM (
            SELECT checksum FROM entries WHERE dictionary = handle
            UNION ALL SELECT checksum FROM records WHERE symbol_table = handle)) AS o,
        (SELECT count(*) AS n, wrapping_sum(checksum) AS sum FROM (
            SELECT checksum FROM fields WHERE object = handle
            UNION ALL SELECT checksum FROM resbufs WHERE object = handle
            UNION ALL SELECT checksum FROM extended_data WHERE object = handle)) AS d))";

constexpr const char* kObjects =
    "UPDATE objects SET "
    "checksum = row_checksum('objects', handle, class, owner, owned, owned_digest, details, details_digest)";

void runAgain(SQLite::Statement& statement)
{
    statement.reset();
    statement.exec();
}

} // namespace

void addChecksumFunctions(SQLite::Database& database)
{
    sqlite3_create_function(database.getHandle(), "row_checksum", -1, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                            rowChecksum, nullptr, nullptr);
    sqlite3_create_function(database.getHandle(), "wrapping_sum", 1, SQLITE_UTF8, nullptr, nullptr, addToSum, endSum);
}

RowChecksums::RowChecksums(SQLite::Database& database) : counts_(database, kCounts), objects_(database, kObjects)
{
    for (const char* sql : kDetails)
        details_.emplace_back(database, sql);
}

void RowChecksums::computeForDetails()
{
    for (SQLite::Statement& statement : details_)
        runAgain(statement);
}

void RowChecksums::computeCounts()
{
    runAgain(counts_);
}

void RowChecksums::computeForObjects()
{
    runAgain(objects_);
}

} // namespace Tests
