// A folder of a test's own, gone with everything in it at the end of the scope.
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
    /// Of everything that lies in it.
    std::set<std::string> names() const;

private:
    std::filesystem::path path_;
};

} // namespace Tests
