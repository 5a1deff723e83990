// What was lately made of which texts, bytes and codes: a drawing has few definitions, which are read again and again
// and always come to the same.
#pragma once

#include <cstddef>
#include <functional>
#include <map>

namespace Embedded {

template <class Key, class Value>
class Remembered {
public:
    /// What was made of `given`, which a key compares with, or else what `make` makes of it. That is kept where
    /// `isLasting` says so of it, unless it was made of more than a definition ever is; all else is forgotten first
    /// when that has become much.
    template <class Given, class Make, class IsLasting>
    Value of(const Given& given, const Make& make, const IsLasting& isLasting)
    {
        if (const auto known = values_.find(given); known != values_.end())
            return known->second;
        Value value = make();
        if (isLasting(value) && !isTooLong(given))
            keep(given, value);
        return value;
    }

private:
    static constexpr std::size_t kMost = 64;
    static constexpr std::size_t kLongest = std::size_t{16} * 1024; // in the key's characters

    template <class Given>
    static bool isTooLong(const Given& given)
    {
        if constexpr (requires { given.size(); })
            return given.size() > kLongest;
        else
            return false;
    }
    template <class Given>
    void keep(const Given& given, const Value& value)
    {
        if (values_.size() == kMost)
            values_.clear();
        values_.emplace(given, value);
    }

    std::map<Key, Value, std::less<>> values_;
};

} // namespace Embedded
