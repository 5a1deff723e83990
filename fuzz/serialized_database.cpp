#include "fuzz/serialized_database.h"

#include <memory>

#include <SQLiteCpp/Backup.h>
#include <sqlite3.h>

#include "fuzz/oracle.h"

namespace Fuzz {

void restoreInto(SQLite::Database& database, const std::string& bytes)
{
    SQLite::Database original(":memory:", SQLite::OPEN_READWRITE);
    std::string copy = bytes;
    const auto length = static_cast<sqlite3_int64>(copy.size());
    const int result = sqlite3_deserialize(original.getHandle(), "main", reinterpret_cast<unsigned char*>(copy.data()),
                                           length, length, SQLITE_DESERIALIZE_READONLY);
    require(result == SQLITE_OK, "a sample's bytes are a database");
    SQLite::Backup(database, original).executeStep(-1);
}

std::string serializeDatabase(SQLite::Database& database)
{
    sqlite3_int64 length = 0;
    const std::unique_ptr<unsigned char, decltype(&sqlite3_free)> bytes(
        sqlite3_serialize(database.getHandle(), "main", &length, 0), sqlite3_free);
    require(bytes != nullptr, "a database in memory has bytes");
    return {reinterpret_cast<const char*>(bytes.get()), static_cast<std::size_t>(length)};
}

} // namespace Fuzz
