// Nested folders whose path is longer than 260 characters, the usual limit of Windows.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

#include "embedded/base/path.h"

namespace Tests {

class DeepFolder {
public:
    /// The path of the deepest folder has at least that many characters.
    DeepFolder(const std::filesystem::path& root, std::size_t characters)
    {
        std::filesystem::path folder = root;
        while (folder.wstring().size() < characters) {
            folder /= std::wstring(100, L'd');
            EXPECT_TRUE(CreateDirectoryW(Embedded::systemPath(folder).c_str(), nullptr));
            folders_.push_back(folder);
        }
    }
    DeepFolder(const DeepFolder&) = delete;
    DeepFolder& operator=(const DeepFolder&) = delete;
    /// Removes the folders and the files in the deepest, which the standard library cannot reach.
    ~DeepFolder()
    {
        WIN32_FIND_DATAW found{};
        const HANDLE search = FindFirstFileW(Embedded::systemPath(path() / "*").c_str(), &found);
        EXPECT_NE(search, INVALID_HANDLE_VALUE);
        do
            DeleteFileW(Embedded::systemPath(path() / found.cFileName).c_str());
        while (FindNextFileW(search, &found));
        FindClose(search);
        for (auto folder = folders_.rbegin(); folder != folders_.rend(); ++folder)
            EXPECT_TRUE(RemoveDirectoryW(Embedded::systemPath(*folder).c_str()));
    }

    const std::filesystem::path& path() const { return folders_.back(); }

private:
    std::vector<std::filesystem::path> folders_;
};

} // namespace Tests
