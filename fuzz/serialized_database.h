// Turns the bytes of a file into an SQLite database in memory, and back.
#pragma once

#include <string>

#include <SQLiteCpp/SQLiteCpp.h>

namespace Fuzz {

/// Replaces the database of the connection, which is in memory.
void restoreInto(SQLite::Database& database, const std::string& bytes);
/// Within a transaction, the bytes hold its changes.
std::string serializeDatabase(SQLite::Database& database);

} // namespace Fuzz
