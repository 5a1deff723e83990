// The files of the repository as text, for tests that read the sources themselves.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace Tests {

struct SourceFile {
    std::string path; // from the repository's root, with forward slashes
    std::string text;
};

/// Reads a file by its path from the root. A file that cannot be read has no text.
SourceFile readFile(const std::filesystem::path& root, const std::string& path);

/// The files below the folders with one of the extensions, sorted by path. A missing folder has no files.
std::vector<SourceFile> readFiles(const std::filesystem::path& root, const std::vector<std::string>& folders,
                                  const std::vector<std::string>& extensions);

/// Every C++ source and header of the project.
std::vector<SourceFile> readProjectSources();

std::vector<std::string> splitLines(std::string_view text);

/// The top folder of the file; empty for a file at the root.
std::string topFolder(std::string_view path);

/// Whether the file belongs to a platform: the project's own, one that a product copies, or one of the tests.
bool belongsToPlatform(std::string_view path);

/// "path:line: what", as compilers write it.
std::string formatComplaint(const std::string& path, std::size_t line, const std::string& what);

/// One complaint a line, for a failure's message.
std::string joinLines(const std::vector<std::string>& complaints);

} // namespace Tests
