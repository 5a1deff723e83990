// The way by which SQLite reaches its files, watched: a test lists the calls, fails each, cuts writes short and ends
// the process at each. It lies below the host's own and above the system's.
#pragma once

#include <filesystem>
#include <vector>

#include "saves/posix/disk_calls.h"

namespace Tests {

/// Watches what SQLite does in a folder, for the length of a scope. Of the ways of an interruption there are `fails`,
/// `failsFromHereOn`, `writesOne` (half of the bytes of a write, which then fails), `killedHalfway` and `killedAfter`;
/// its error is the result code of a write that fails. Other calls fail with codes of their own. Nothing waits for the
/// disk. A database is to be opened within the scope and closed before it ends.
class WatchedDisk {
public:
    explicit WatchedDisk(const std::filesystem::path& folder, const Interruption& interruption = {});
    WatchedDisk(const WatchedDisk&) = delete;
    WatchedDisk& operator=(const WatchedDisk&) = delete;
    ~WatchedDisk();

    /// So far, in their order, but for those that only look.
    const std::vector<DiskCall>& calls() const;
    /// Of each call of all, whether it only looks.
    const std::vector<bool>& looks() const;
};

} // namespace Tests
