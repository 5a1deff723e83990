// A file that is made under a name of its own, and gets its final one when it is whole.
#pragma once

#include <filesystem>
#include <memory>
#include <string_view>

#include "platform/export.h"

namespace Embedded {

/// Removed unless it got its final name. One that a killed process has left behind is removed by the next in its
/// folder; on Windows by the user. Every member throws std::system_error.
class FQCORE_API StagedFile {
public:
    /// A new, empty file in the folder of `target`. Where there is a target, only this user can read the new file.
    explicit StagedFile(const std::filesystem::path& target);
    StagedFile(const StagedFile&) = delete;
    StagedFile& operator=(const StagedFile&) = delete;
    ~StagedFile();

    const std::filesystem::path& name() const;
    void write(std::string_view bytes);
    /// Flushes the file to the disk and gives it the name; false for one that exists.
    bool publishAs(const std::filesystem::path& target);
    /// Flushes the file to the disk and puts it in the place of the target, whose permissions it gets.
    void replace(const std::filesystem::path& target);

private:
    class Imp;
    std::unique_ptr<Imp> imp_;
};

} // namespace Embedded
