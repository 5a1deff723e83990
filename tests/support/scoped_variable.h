// An environment variable with a value of the test's own.
#pragma once

#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

namespace Tests {

class ScopedVariable {
public:
    /// Without a value the variable is absent.
    explicit ScopedVariable(std::string name, std::optional<std::string> value = std::nullopt) : name_(std::move(name))
    {
        if (const char* const before = std::getenv(name_.c_str()))
            before_ = before;
        set(value);
    }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;
    ~ScopedVariable() { set(before_); }

    void set(const std::optional<std::string>& value) const
    {
        if (value)
            ::setenv(name_.c_str(), value->c_str(), 1);
        else
            ::unsetenv(name_.c_str());
    }

private:
    std::string name_;
    std::optional<std::string> before_;
};

} // namespace Tests
