// The links of a Markdown page.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "project/source_tree.h"

namespace Tests {

/// The targets of the page's links and images as written, in order. Links in code are left out.
std::vector<std::string> findLinks(std::string_view markdown);

/// One complaint for each link to a missing file, a file outside the root, or a missing heading of a page. Links to
/// other hosts are not checked.
std::vector<std::string> findBrokenLinks(const std::filesystem::path& root, const SourceFile& page);

} // namespace Tests
