// Page checksums, called seals. The last eight bytes of a page are a checksum of its other bytes and its number, which
// shows every flipped bit of a file. The file's header tells SQLite to leave these bytes alone.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <sqlite3.h>

namespace Embedded {

inline constexpr int kSealBytes = 8;

/// The name of the SQLite VFS that seals each page of a database when it is written. It uses the current default VFS. A
/// database opened through it has no shared memory, and so no write-ahead log.
const char* sealingVfs();

/// Reserves room for the seals in an empty database.
void leaveRoomForSeals(sqlite3* connection);

/// Seals the pages of a database in memory.
void sealPages(std::string& database);

/// Returns whether the pages of the connection's database have seals: only the sealing VFS makes them.
bool hasSeals(sqlite3* connection);

/// The numbers of the pages whose seal does not match. Page 0 stands for a file of a wrong size. The connection must be
/// in a transaction.
std::vector<std::uint32_t> brokenSeals(sqlite3* connection);

} // namespace Embedded
