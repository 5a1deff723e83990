// The directions in which the project's sources may include each other.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "project/source_tree.h"

namespace Tests {

struct IncludeDirective {
    std::size_t line = 0;
    std::string target;
    bool isAngled = false; // <target> instead of "target"
};

/// Whether the table of rooms has the folder of the file.
bool belongsToRoom(const std::string& file);

std::vector<IncludeDirective> parseIncludes(const SourceFile& file);

/// One complaint for each #include that breaks the direction of the dependencies:
/// - src: the standard library, src itself and the platform's four headers, written "platform/….h";
/// - platform: the standard library and itself; other system headers in win32.h alone;
/// - embedded: platform, embedded and libraries;
/// - tools, tests and other folders on top may include everything;
/// - a room of src, embedded or tools: only the rooms that its line in the table of rooms names.
std::vector<std::string> findForbiddenIncludes(const std::vector<SourceFile>& files);

} // namespace Tests
