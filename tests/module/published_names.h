// What the module publishes, as the baseline files beside the tests have it.
#pragma once

#include <set>
#include <string>

namespace Tests {

using Names = std::set<std::string>;

/// The lines of a file in tests/module.
Names namesInFile(const std::string& file);

/// Line by line, what is in the first and not in the second.
std::string difference(const Names& first, const Names& second);

/// A mangled name as the sources spell it; names that are not mangled as they are.
std::string demangled(const std::string& name);

} // namespace Tests
