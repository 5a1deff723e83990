// The published names of the module, from the baseline files in this folder.
#pragma once

#include <set>
#include <string>

namespace Tests {

using Names = std::set<std::string>;

/// The lines of a file in tests/module.
Names namesInFile(const std::string& file);

/// The lines of the first that the second lacks.
std::string difference(const Names& first, const Names& second);

/// Turns a mangled name into the spelling of the sources. Leaves other names unchanged.
std::string demangled(const std::string& name);

} // namespace Tests
