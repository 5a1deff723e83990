// The calls by which this program reaches a folder. The program's own open, write, rename… stand in front of the
// system's, also for the shared libraries, so that a test can list the calls, fail each, and end the process at each.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Tests {

struct DiskCall {
    enum class Kind { open, create, write, truncate, flush, close, access, rename, remove, makeFolder, look };

    Kind kind = Kind::look;
    std::string_view name;        // of the system's function
    std::filesystem::path path;   // of a descriptor, what it was opened as
    std::filesystem::path target; // of a rename
    std::string bytes;            // of a write
    std::size_t offset = 0;       // of a write, and the length that a truncation leaves
    bool done = false;            // and not failed
};

/// What is to happen instead of the call with that number.
struct Interruption {
    enum class Way {
        none,
        fails,
        failsFromHereOn,
        interrupted,   // by a signal, and succeeds when it is tried again
        writesOne,     // of the bytes
        writesNone,    // and reports no error
        killedHalfway, // through the bytes of a write
        killedAfter,
        meanwhile // something else happens first
    };

    Way way = Way::none;
    std::size_t call = 0;
    int error = 0;
    std::function<void()> other = {}; // what happens meanwhile, unwatched
};

/// Watches the calls that have to do with a folder, for the length of a scope.
class WatchedFolder {
public:
    explicit WatchedFolder(const std::filesystem::path& folder, const Interruption& interruption = {});
    WatchedFolder(const WatchedFolder&) = delete;
    WatchedFolder& operator=(const WatchedFolder&) = delete;
    ~WatchedFolder();

    /// So far, in their order.
    const std::vector<DiskCall>& calls() const;
};

} // namespace Tests
