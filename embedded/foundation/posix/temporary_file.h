// The new file of a save, before it has its final name.
#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <string_view>

#include "embedded/foundation/posix/file_descriptor.h"

namespace Embedded {

/// What stopped the write; thrown from step to step, so that the temporary file goes away on every road.
struct WriteFailure {
    int error = 0; // of errno
    int plannedCode = 0;
};

/// A file under a name of its own, removed unless it was given its final one. It is locked as long as it lives, which
/// tells it from one that was left behind by a process that was killed.
class TemporaryFile {
public:
    TemporaryFile(const std::filesystem::path& folder, mode_t mode);
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile();

    void copyAccess(const struct stat& original);
    void write(std::string_view text);
    void flush();
    void renameTo(const std::filesystem::path& target);
    /// False for a target that exists.
    bool renameToNew(const std::filesystem::path& target);
    const std::filesystem::path& name() const { return name_; }

    /// Removes from the folder what killed processes of this user have left there. What cannot be removed stays.
    static void removeAbandoned(const std::filesystem::path& folder);

private:
    void removeUnderItsName();

    FileDescriptor descriptor_;
    std::filesystem::path name_;
};

/// So that a new name in the folder outlasts a loss of power.
void flushFolder(const std::filesystem::path& folder);

} // namespace Embedded
