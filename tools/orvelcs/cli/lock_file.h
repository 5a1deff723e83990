// A file that one process at a time holds.
#pragma once

#include <cstdint>
#include <filesystem>

namespace Orvelcs {

/// Creates the file where there is none. The system releases the lock when the process ends, however it ends. The file
/// is never removed, because a waiting process would then lock a file that nobody else can open.
class LockFile {
public:
    /// Throws Failure when it cannot be opened.
    explicit LockFile(const std::filesystem::path& file);
    LockFile(const LockFile&) = delete;
    LockFile& operator=(const LockFile&) = delete;
    ~LockFile();

    /// Returns false while another process holds the lock. Throws Failure when it cannot be locked.
    [[nodiscard]] bool tryLock();

private:
    std::filesystem::path file_;
    std::intptr_t handle_; // the system's
};

} // namespace Orvelcs
