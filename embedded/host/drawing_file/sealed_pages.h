// The seal of a page: its last eight bytes are a checksum of the others and of the page's number, so that every flipped
// bit of a file can be found, also where no row lies. SQLite leaves these bytes alone, as a file's header tells it to.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <sqlite3.h>

namespace Embedded {

inline constexpr int kSealBytes = 8;

/// The name of the SQLite VFS that seals each page of a database as it is written, on top of what is the default VFS
/// now. A database opened through it has no shared memory, and so no write-ahead log.
const char* sealingVfs();

/// Has an empty database of the connection leave room for the seals.
void leaveRoomForSeals(sqlite3* connection);

/// Seals the pages of a database that lies in memory.
void sealPages(std::string& database);

/// Whether the pages of the connection's database have seals: only the sealing VFS makes them.
bool hasSeals(sqlite3* connection);

/// The numbers of the pages that are not as they were sealed; page 0 stands for a file of a wrong size. The connection
/// is in a transaction.
std::vector<std::uint32_t> brokenSeals(sqlite3* connection);

} // namespace Embedded
