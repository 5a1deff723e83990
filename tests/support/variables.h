// The environment variables of this process and of the programs that it starts.
#pragma once

#include <optional>
#include <string>

namespace Tests {

/// The value in UTF-8; nothing if the variable is not set.
std::optional<std::string> getVariable(const std::string& name);
/// Without a value the variable is removed.
void setVariable(const std::string& name, const std::optional<std::string>& value);

} // namespace Tests
