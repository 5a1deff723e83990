// Records and interrupts the calls by which this program reaches a folder. The program defines open, write, rename and
// others itself, and the shared libraries call these as well. A test can list the calls, make each fail, and end the
// process at each.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace Tests {

struct DiskCall {
    enum class Kind { open, create, write, truncate, flush, close, access, rename, remove, makeFolder, query };

    Kind kind = Kind::query;
    std::string_view name;        // of the function
    std::filesystem::path path;   // for a descriptor, the path that was opened
    std::filesystem::path target; // for a rename
    std::string bytes;            // for a write
    std::size_t offset = 0;       // for a write; for a truncation, the new length
    bool done = false;            // false if the call failed
};

/// Interrupts the call with that number.
struct Interruption {
    enum class Effect {
        none,
        fails,
        failsFromHereOn,
        interrupted,   // by a signal; the call succeeds when it is made again
        writesOne,     // of the bytes
        writesNone,    // without an error
        killedHalfway, // after half the bytes of a write
        killedAfter,
        meanwhile // `other` runs before the call
    };

    Effect effect = Effect::none;
    std::size_t call = 0;
    int error = 0;
    std::function<void()> other = {}; // its own calls are not recorded
};

[[noreturn]] void killThisProcess();

/// Records the calls on a folder and its contents during a scope.
class WatchedFolder {
public:
    explicit WatchedFolder(const std::filesystem::path& folder, const Interruption& interruption = {});
    WatchedFolder(const WatchedFolder&) = delete;
    WatchedFolder& operator=(const WatchedFolder&) = delete;
    ~WatchedFolder();

    /// The calls so far, in order.
    const std::vector<DiskCall>& calls() const;
};

} // namespace Tests
