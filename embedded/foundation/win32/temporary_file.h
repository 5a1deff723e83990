// The new file of a save, before it has its final name.
#pragma once

#include <windows.h>

#include <filesystem>
#include <string_view>

#include "embedded/foundation/win32/file_handle.h"

namespace Embedded {

/// What stopped the write; thrown from step to step, so that the temporary file goes away on every road.
struct WriteFailure {
    DWORD error = 0; // of GetLastError
    int plannedCode = 0;
};

/// A file under a name of its own, removed unless it was given its final one.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::filesystem::path& folder);
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile();

    void write(std::string_view text);
    void flush();
    /// For others to open it.
    void close() { handle_.close(); }
    void renameTo(const std::filesystem::path& target);
    /// False for a target that exists.
    bool renameToNew(const std::filesystem::path& target);
    const std::filesystem::path& name() const { return name_; }

private:
    FileHandle handle_;
    std::filesystem::path name_;
};

} // namespace Embedded
