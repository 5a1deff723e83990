// An SQLite database in memory, from the bytes of its file and back.
#pragma once

#include <string>

#include <SQLiteCpp/SQLiteCpp.h>

namespace Fuzz {

/// Makes a database of the connection, which is one in memory, as the bytes say.
void restoreInto(SQLite::Database& database, const std::string& bytes);
/// Also within a transaction, and then as it is there.
std::string bytesOfDatabase(SQLite::Database& database);

} // namespace Fuzz
