// Folders below one another, beyond the 260 characters that a file's name has without further ado.
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
    /// The deepest has a name of at least that many characters.
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
    /// With the files in the deepest; the standard library does not reach them.
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
