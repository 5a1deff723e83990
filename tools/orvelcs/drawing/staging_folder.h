// Where the module writes a new settings file before it takes the place of the old one.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace Orvelcs {

/// An empty folder in `parent`, in which the module looks for the user's settings file as long as this lives. What a
/// killed process has left under its name is removed first: only one process at a time may have one there.
/// Its name is relative to the working folder, which `parent` becomes, since the module takes no long ones.
class StagingFolder {
public:
    /// Throws Failure when it cannot be made.
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
