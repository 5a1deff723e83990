// Files that are written whole or not at all.
#pragma once

#include <filesystem>
#include <memory>
#include <string_view>

#include "embedded/base/error.h"
#include "platform/export.h"

namespace Embedded {

class StagedFileImp;

/// A file with a temporary name beside its target, which gets the target's name when it is complete. Its destructor
/// removes it if it still has the temporary name. The next StagedFile in the same folder removes what a killed process
/// has left there; on Windows the user has to.
/// The Error of each function has the status of the system, "cannot be written" with the reason, and the target's name
/// as the place.
class FQCORE_API StagedFile {
public:
    /// Makes an empty file in the folder of `target`. Only this user can read it if there is a target.
    [[nodiscard]] static Expected<StagedFile> create(const std::filesystem::path& target);
    StagedFile(StagedFile&& other) noexcept;
    StagedFile& operator=(StagedFile&& other) noexcept;
    ~StagedFile();

    const std::filesystem::path& temporaryName() const;
    [[nodiscard]] Expected<void> write(std::string_view bytes);
    /// Flushes the file to the disk and gives it the target's name. Returns false if a file has that name already.
    [[nodiscard]] Expected<bool> publish();
    /// Flushes the file to the disk and puts it in the place of the target, whose permissions it gets.
    [[nodiscard]] Expected<void> replaceTarget();

private:
    explicit StagedFile(std::unique_ptr<StagedFileImp> imp);

    std::unique_ptr<StagedFileImp> imp_;
};

/// The file that is replaced when this name is written to: the name itself, or where its links lead. Refuses a file
/// that may not be written to, anything but a regular file and, on Windows, a link that leads to nothing.
[[nodiscard]] FQCORE_API Expected<std::filesystem::path> replaceableFile(const std::filesystem::path& file);

/// Writes the bytes to a StagedFile and replaces the file with it, so that the file holds either its old content or all
/// of the new one. Keeps the file's permissions. Refuses what `replaceableFile` refuses.
[[nodiscard]] FQCORE_API Expected<void> replaceFile(const std::filesystem::path& file, std::string_view bytes);

} // namespace Embedded
