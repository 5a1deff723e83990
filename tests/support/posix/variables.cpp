#include "support/variables.h"

#include <cstdlib>

namespace Tests {

std::optional<std::string> getVariable(const std::string& name)
{
    const char* const value = std::getenv(name.c_str());
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

void setVariable(const std::string& name, const std::optional<std::string>& value)
{
    if (value)
        ::setenv(name.c_str(), value->c_str(), 1);
    else
        ::unsetenv(name.c_str());
}

} // namespace Tests
