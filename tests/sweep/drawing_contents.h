// The contents of a drawing without handles, for comparing drawings whose objects were written again.
#pragma once

#include <map>
#include <string>

namespace Tests {

/// The reachable objects by their paths. Leaves out handles and empty dictionaries.
using ObjectsByPath = std::map<std::string, std::string>;

/// `contents` is the text of `drawingContents`.
ObjectsByPath objectsByPath(const std::string& contents);

} // namespace Tests
