// A file that is made under a name of its own, and gets its final one when it is whole.
#pragma once

#include <filesystem>
#include <memory>

#include "platform/export.h"

namespace Embedded {

class TemporaryFile;

/// Removed unless it was published. One that a killed process has left behind is removed by the next in its folder; on
/// Windows by the user.
class FQCORE_API StagedFile {
public:
    /// A new, empty file in the folder of `target`. Throws std::system_error.
    explicit StagedFile(const std::filesystem::path& target);
    StagedFile(const StagedFile&) = delete;
    StagedFile& operator=(const StagedFile&) = delete;
    ~StagedFile();

    const std::filesystem::path& name() const;
    /// Flushes the file to the disk and gives it the name; false for one that exists. Throws std::system_error.
    bool publishAs(const std::filesystem::path& target);
    /// The same over a file that exists.
    void replace(const std::filesystem::path& target);

private:
    std::unique_ptr<TemporaryFile> file_;
};

} // namespace Embedded
