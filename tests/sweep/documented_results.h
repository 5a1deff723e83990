// The results that the documentation names for each exported function.
#pragma once

#include <string>

namespace Tests {

/// Whether docs/results.md lists the result for the function as one of the module's own.
bool isDocumented(const std::string& function, int result);

} // namespace Tests
