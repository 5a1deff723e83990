// A VFS that records and interrupts the calls by which SQLite reaches its files. A test can list the calls, make each
// fail, cut writes short and end the process at each. It lies below the host's VFS and above the system's.
#pragma once

#include <filesystem>
#include <vector>

#include "saves/posix/disk_calls.h"

namespace Tests {

/// Records the calls of SQLite in a folder during a scope. The effects are `fails`, `failsFromHereOn`,
/// `writesOne` (writes half of the bytes and fails), `killedHalfway` and `killedAfter`. The error of the interruption
/// is the result code of a failing write; other calls fail with their own codes. Nothing waits for the disk. A database
/// must be opened within the scope and closed before it ends.
class WatchedDisk {
public:
    explicit WatchedDisk(const std::filesystem::path& folder, const Interruption& interruption = {});
    WatchedDisk(const WatchedDisk&) = delete;
    WatchedDisk& operator=(const WatchedDisk&) = delete;
    ~WatchedDisk();

    /// The calls so far, in order, without queries.
    const std::vector<DiskCall>& calls() const;
    /// Whether each call, of all calls, is a query.
    const std::vector<bool>& isQuery() const;
};

} // namespace Tests
