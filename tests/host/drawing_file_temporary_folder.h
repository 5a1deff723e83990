// A folder for the length of a test, and what is in it.
#pragma once

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <set>
#include <string>

namespace Tests {

class TemporaryFolder {
public:
    TemporaryFolder()
    {
        std::string name = (std::filesystem::temp_directory_path() / "drawing-file-test-XXXXXX").string();
        EXPECT_NE(::mkdtemp(name.data()), nullptr) << name;
        path_ = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder()
    {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
        EXPECT_FALSE(error) << error.message();
    }

    const std::filesystem::path& path() const { return path_; }
    std::set<std::string> names() const
    {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(path_))
            names.insert(entry.path().filename().string());
        return names;
    }

private:
    std::filesystem::path path_;
};

} // namespace Tests
