// The environment variables of this process, as it and the programs that it starts see them.
#pragma once

#include <optional>
#include <string>

namespace Tests {

/// UTF-8; nothing where there is no such variable.
std::optional<std::string> variableNamed(const std::string& name);
/// Without a value the variable is removed.
void setVariable(const std::string& name, const std::optional<std::string>& value);

} // namespace Tests
