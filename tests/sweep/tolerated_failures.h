// Lists the failures that change no result, with the reasons. A call must report every other failure.
#pragma once

#include <optional>
#include <string>

namespace Tests {

/// Why the exported function may succeed although `failure` happened: the name of a platform call, or "allocation",
/// "hostAllocation" or "notice".
std::optional<std::string> reasonToTolerate(const std::string& function, const std::string& failure);

} // namespace Tests
