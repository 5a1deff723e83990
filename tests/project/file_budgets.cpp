#include "project/file_budgets.h"

#include <string_view>

namespace Tests {
namespace {

constexpr std::size_t kHeaderLimit = 200;
constexpr std::size_t kSourceLimit = 400;

/// The headers of the porting kit are four files for an engineer to copy, with a comment for each declaration.
constexpr std::string_view kKitHeaders = "examples/port/platform/";

/// A product builds it as one source; it is a table of checks.
constexpr std::string_view kUnlimitedSource = "examples/port/port_check.cpp";

} // namespace

std::vector<std::string> findFilesOverBudget(const std::vector<SourceFile>& files)
{
    std::vector<std::string> complaints;
    for (const SourceFile& file : files) {
        if (file.path.starts_with(kKitHeaders) && file.path.ends_with(".h"))
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
