// The failures that change no result, with the reason why: whatever is not on the list is to be heard of.
#pragma once

#include <optional>
#include <string>

namespace Tests {

/// Why a call of the function may succeed although the platform's call (or "allocation", or "notice") failed.
std::optional<std::string> reasonToPassOver(const std::string& function, const std::string& call);

} // namespace Tests
