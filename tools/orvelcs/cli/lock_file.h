// A file that one process at a time holds.
#pragma once

#include <cstdint>
#include <filesystem>

namespace Orvelcs {

/// The file, made where there is none, and the lock on it once it was got. The system releases the lock when the
/// process ends, however it ends. The file stays: a process that waits for it would hold a removed one.
class LockFile {
public:
    /// Throws Failure when it cannot be opened.
    explicit LockFile(const std::filesystem::path& file);
    LockFile(const LockFile&) = delete;
    LockFile& operator=(const LockFile&) = delete;
    ~LockFile();

    /// False while another process holds it. Throws Failure when it cannot be locked.
    [[nodiscard]] bool tryLock();

private:
    std::filesystem::path file_;
    std::intptr_t handle_; // the system's
};

} // namespace Orvelcs
