// Caches the most recently parsed definitions. A drawing has few of them and reads them often.
#pragma once

#include <cstddef>
#include <functional>
#include <map>

namespace Embedded {

template <class Key, class Value>
class MemoCache {
public:
    /// Returns the cached value of the key, or what `compute` returns. Keeps that value if `isLasting` accepts it and
    /// the key has at most kMaxKeyLength characters, which every definition fits. Empties a full cache first.
    template <class Lookup, class Compute, class IsLasting>
    Value getOrCompute(const Lookup& key, const Compute& compute, const IsLasting& isLasting)
    {
        if (const auto known = values_.find(key); known != values_.end())
            return known->second;
        Value value = compute();
        if (isLasting(value) && !isTooLong(key))
            keep(key, value);
        return value;
    }

private:
    static constexpr std::size_t kMaxEntries = 64;
    static constexpr std::size_t kMaxKeyLength = std::size_t{16} * 1024;

    template <class Lookup>
    static bool isTooLong(const Lookup& key)
    {
        if constexpr (requires { key.size(); })
            return key.size() > kMaxKeyLength;
        else
            return false;
    }
    template <class Lookup>
    void keep(const Lookup& key, const Value& value)
    {
        if (values_.size() == kMaxEntries)
            values_.clear();
        values_.emplace(key, value);
    }

    std::map<Key, Value, std::less<>> values_;
};

} // namespace Embedded
