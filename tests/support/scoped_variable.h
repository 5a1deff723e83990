// Sets an environment variable for the length of a scope.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "support/variables.h"

namespace Tests {

class ScopedVariable {
public:
    /// Without a value the variable is removed.
    explicit ScopedVariable(std::string name, std::optional<std::string> value = std::nullopt)
        : name_(std::move(name)), before_(getVariable(name_))
    {
        set(value);
    }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;
    ~ScopedVariable() { set(before_); }

    void set(const std::optional<std::string>& value) const { setVariable(name_, value); }

private:
    std::string name_;
    std::optional<std::string> before_;
};

} // namespace Tests
