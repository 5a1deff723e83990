// The tables of docs/porting.md, which are made of the headers of the porting kit.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "project/porting_declarations.h"

namespace Tests {

/// The tables of the declarations that have a comment: name, declaration, what is expected. One table for each section,
/// below its heading.
std::string formatPortingTables(const std::vector<Declaration>& declarations);

/// The text between the marks of a header in the page. Empty without the marks.
std::string findPortingTables(std::string_view page, const std::string& header);

/// The page with other text between the marks of a header.
std::string replacePortingTables(const std::string& page, const std::string& header, const std::string& tables);

} // namespace Tests
