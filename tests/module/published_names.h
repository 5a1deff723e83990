// The published names of the module, from the baseline files in this folder.
#pragma once

#include <set>
#include <string>

namespace Tests {

using Names = std::set<std::string>;

/// Reads the lines of a file in tests/module.
Names readNames(const std::string& file);

/// Lists the names of the first set that the second lacks, one on each line.
std::string missingNames(const Names& first, const Names& second);

/// Turns a mangled name into the spelling of the sources. Leaves other names unchanged.
std::string demangle(const std::string& name);

} // namespace Tests
