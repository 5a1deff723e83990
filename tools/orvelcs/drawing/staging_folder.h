// The folder in which the module writes a new settings file before it replaces the old one.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace Orvelcs {

/// Creates an empty folder in `parent`, in which the module looks for the user's settings file as long as this lives.
/// First removes the folder of a process that was killed: only one process at a time may have one there. `parent`
/// becomes the working folder, because the module needs a short name.
class StagingFolder {
public:
    /// Throws Failure when the folder cannot be created.
    explicit StagingFolder(const std::filesystem::path& parent);
    StagingFolder(const StagingFolder&) = delete;
    StagingFolder& operator=(const StagingFolder&) = delete;
    ~StagingFolder();

private:
    std::filesystem::path folder_;
    std::filesystem::path workingFolder_; // as it was
    std::optional<std::string> variable_; // as it was
};

} // namespace Orvelcs
