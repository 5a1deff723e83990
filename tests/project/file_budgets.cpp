#include "project/file_budgets.h"

namespace Tests {
namespace {

constexpr std::size_t kHeaderLimit = 200;
constexpr std::size_t kSourceLimit = 400;

/// A platform that a product copies is four headers, each as long as the list of what the module needs of it.
bool isHeaderToCopy(const std::string& path)
{
    return belongsToPlatform(path) && topFolder(path) != "platform" && path.ends_with(".h");
}

/// A product builds it as one source; it is a table of checks.
constexpr std::string_view kUnlimitedSource = "examples/port/port_check.cpp";

} // namespace

std::vector<std::string> findFilesOverBudget(const std::vector<SourceFile>& files)
{
    std::vector<std::string> complaints;
    for (const SourceFile& file : files) {
        if (isHeaderToCopy(file.path))
            continue;
        const std::size_t limit = file.path.ends_with(".h") ? kHeaderLimit : kSourceLimit;
        const std::size_t lines = splitLines(file.text).size();
        if (lines >= limit && file.path != kUnlimitedSource)
            complaints.push_back(file.path + ": " + std::to_string(lines) + " lines, where fewer than " +
                                 std::to_string(limit) + " are allowed");
    }
    return complaints;
}

} // namespace Tests
