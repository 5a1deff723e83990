#include "project/source_tree.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace Tests {

namespace fs = std::filesystem;

SourceFile readFile(const fs::path& root, const std::string& path)
{
    std::ifstream stream(root / path, std::ios::binary);
    return {path, {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()}};
}

std::vector<SourceFile> readFiles(const fs::path& root, const std::vector<std::string>& folders,
                                  const std::vector<std::string>& extensions)
{
    std::vector<SourceFile> files;
    for (const std::string& folder : folders) {
        if (!fs::is_directory(root / folder))
            continue;
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root / folder)) {
            const std::string extension = entry.path().extension().string();
            if (entry.is_regular_file() && std::ranges::find(extensions, extension) != extensions.end())
                files.push_back(readFile(root, entry.path().lexically_relative(root).generic_string()));
        }
    }
    std::ranges::sort(files, {}, &SourceFile::path);
    return files;
}

std::vector<SourceFile> readProjectSources()
{
    return readFiles(ORVEL_SOURCE_DIR, {"src", "platform", "embedded", "tools", "tests", "fuzz", "bench", "examples"},
                     {".h", ".cpp"});
}

std::vector<std::string> splitLines(std::string_view text)
{
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

std::string topFolder(std::string_view path)
{
    const std::size_t slash = path.find('/');
    return std::string(slash == std::string_view::npos ? "" : path.substr(0, slash));
}

bool belongsToPlatform(std::string_view path)
{
    const bool hasPlatforms = path.starts_with("examples/port/") || path.starts_with("tests/porting/");
    return topFolder(path) == "platform" || (hasPlatforms && path.find("/platform/") != std::string_view::npos);
}

std::string formatComplaint(const std::string& path, std::size_t line, const std::string& what)
{
    return path + ":" + std::to_string(line) + ": " + what;
}

std::string joinLines(const std::vector<std::string>& complaints)
{
    std::string text;
    for (const std::string& one : complaints)
        text += one + "\n";
    return text;
}

} // namespace Tests
