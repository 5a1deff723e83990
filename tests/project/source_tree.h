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

/// The file at the path, given from the root; one that cannot be read has no text.
SourceFile readFile(const std::filesystem::path& root, const std::string& path);

/// Files below the named folders whose extension is one of those given, sorted by path; a folder that is not there
/// has none.
std::vector<SourceFile> readFiles(const std::filesystem::path& root, const std::vector<std::string>& folders,
                                  const std::vector<std::string>& extensions);

/// Every C++ source and header of the project.
std::vector<SourceFile> readProjectSources();

std::vector<std::string> linesOf(std::string_view text);

/// The folder at the root that holds the file; empty for a file at the root itself.
std::string roomOf(std::string_view path);

/// "path:line: what", as compilers write it.
std::string complaint(const std::string& path, std::size_t line, const std::string& what);

/// One complaint a line, for a failure's message.
std::string joined(const std::vector<std::string>& complaints);

} // namespace Tests
