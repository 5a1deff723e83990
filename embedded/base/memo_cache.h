// Caches the most recently used definitions. A drawing has few of them and reads them often.
#pragma once

#include <algorithm>
#include <cstddef>
#include <list>
#include <utility>

namespace Embedded {

template <class Key, class Value>
class MemoCache {
public:
    static constexpr std::size_t kMaxEntries = 64;
    static constexpr std::size_t kMaxKeyLength = std::size_t{16} * 1024;

    /// Returns the cached value of the key, or what `compute` returns. Keeps that value if `isLasting` accepts it and
    /// the key has at most kMaxKeyLength characters. A full cache drops the value that was
    /// used longest ago.
    template <class Lookup, class Compute, class IsLasting>
    Value getOrCompute(const Lookup& key, const Compute& compute, const IsLasting& isLasting)
    {
        // A search through all of them compares long keys once each, mostly by their lengths.
        const auto known = std::ranges::find_if(entries_, [&key](const Entry& entry) { return entry.first == key; });
        if (known != entries_.end()) {
            ++hits_;
            entries_.splice(entries_.begin(), entries_, known);
            return known->second;
        }
        ++misses_;
        Value value = compute();
        if (isLasting(value) && !isTooLong(key))
            keep(key, value);
        return value;
    }

    /// How many values were found in the cache, and how many were computed.
    std::size_t hits() const { return hits_; }
    std::size_t misses() const { return misses_; }

private:
    using Entry = std::pair<Key, Value>;

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
        entries_.emplace_front(key, value);
        if (entries_.size() > kMaxEntries)
            entries_.pop_back();
    }

    std::list<Entry> entries_; // the most recently used first
    std::size_t hits_ = 0;
    std::size_t misses_ = 0;
};

} // namespace Embedded
