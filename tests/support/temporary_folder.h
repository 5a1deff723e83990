// A new folder for a test. The end of the scope removes it with its contents.
#pragma once

#include <filesystem>
#include <set>
#include <string>

namespace Tests {

class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::filesystem::path& path() const { return path_; }
    /// The names of everything in the folder.
    std::set<std::string> names() const;

private:
    std::filesystem::path path_;
};

} // namespace Tests
